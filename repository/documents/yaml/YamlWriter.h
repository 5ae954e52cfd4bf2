#pragma once

#include "repository/documents/common/Document.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// New entries as a tree, to be written in blocks or between brackets.
struct YamlBranch
{
    std::string key;              // empty for an element
    const Value* value = nullptr; // of an entry, which outlives the branch; null for a group
    std::vector<YamlBranch> children;
    bool isArray = false;
};

// The key that a component of a path is, or why YAML cannot have it, perhaps in the quotes of a former one.
std::string yamlKeyOf(std::string_view component, std::string& error, std::string_view former = {});

// Gives why something has no place in YAML, or a branch for a new entry and all below it.
std::string growYamlBranch(const std::vector<Entry>& entries, YamlBranch& branch);

// How new lines look.
struct YamlBlockStyle
{
    std::string lineEnd = "\n";
    std::size_t step = 2;
    bool indentsLists = true; // below a key
};

// Appends texts for branches. The first that is refused makes the error.
class YamlWriter
{
public:
    explicit YamlWriter(YamlBlockStyle blockStyle) : style(std::move(blockStyle)) {}

    // Lines, each with its end.
    void writeMember(const YamlBranch& branch, std::size_t indentation);
    void writeElement(const YamlBranch& branch, std::size_t indentation);
    void writeContent(const YamlBranch& branch, std::size_t indentation); // of a map or list

    // The text of a file, or of a document of several, in which an empty map is one.
    void writeWhole(const YamlBranch& root, bool isOneOfSeveral = false);

    // A value, or a member with its key, as it lies between brackets.
    void writeFlow(const YamlBranch& branch);
    void writeFlowMember(const YamlBranch& branch);

    std::string text;
    std::string error;

private:
    void writeTag(const YamlBranch& branch, std::size_t indentation);
    void writeScalar(const Value& value, std::size_t indentation, bool inFlow);
    void fail(std::string reason);

    YamlBlockStyle style;
};

} // namespace Repository::Documents
