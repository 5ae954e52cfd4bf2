#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/toml/TomlString.h"

#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// New entries as a tree, to be written in one of the forms that TOML has for them.
struct TomlBranch
{
    std::string key;              // empty for an element of an array
    const Value* value = nullptr; // of an entry, which outlives the branch; null for a group
    std::vector<TomlBranch> children;
    bool isArray = false;

    // Whether it takes a line of its own, as key = value; otherwise it needs a header.
    bool isPair() const;

    // Whether it is an array of tables.
    bool isTables() const;
};

// How new lines look.
struct TomlStyle
{
    TomlStringPlace place;
    std::string indentation;       // of keys
    std::string headerIndentation; // of tables
    std::string separator = " = ";
    bool hasBlankLines = true; // above headers
    bool isPadded = true;      // within braces
};

// The key that a component of a path is, or why TOML cannot have it.
std::string tomlKeyOf(std::string_view component, std::string& error);

// Gives why something has no place in TOML, or a branch for a new entry and all below it.
std::string growTomlBranch(const std::vector<Entry>& entries, TomlBranch& branch);

// Appends texts for branches. The first that is refused makes the outcome.
class TomlBranchWriter
{
public:
    explicit TomlBranchWriter(const TomlStyle& lineStyle) : style(lineStyle) {}

    // A line with the key, each of whose parts is given as it is spelled, and with a type tag above it where
    // it needs one. Tables are lines, too, whose keys are dotted.
    void writePairs(const std::string& key, const TomlBranch& branch);

    // A table with its header, or an array of tables.
    void writeTable(const std::string& path, const TomlBranch& branch);

    // The members of a table, first its own pairs.
    void writeMembers(const std::string& path, const TomlBranch& branch);

    // One element of an array of tables.
    void writeElement(const std::string& path, const TomlBranch& branch);

    // A value as it lies in an array or in an inline table.
    void writeInline(const TomlBranch& branch, bool isInTable);

    std::string text;
    std::string error;

private:
    void writeHeader(const std::string& header);
    void writePair(const std::string& key, const Value& value);
    void writeInlineMember(const std::string& key, const TomlBranch& branch, bool& isFirst);

    const TomlStyle& style; // not owned
    std::size_t depth = 0;
    std::string place; // the key of the value that is being written
};

std::string joinTomlKey(const std::string& path, const std::string& part);

} // namespace Repository::Documents
