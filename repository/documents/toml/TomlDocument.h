#pragma once

#include "repository/documents/toml/TomlFile.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// A file of TOML 1.0. Tables are groups, whether headers, dotted keys or braces make them; an array of texts
// is one list; any other array, and an array of tables, is a group of 0, 1, 2 ... The value of a table with
// entries is its member "#value"; a comment line above a value tags a type that TOML lacks.
class TomlDocument : public Document
{
public:
    Outcome parse(std::string bytes) override;
    void visit(const std::function<void(const Entry&)>& visitor) const override;
    Outcome set(std::string_view path, const Value& value) override;
    bool namesType(std::string_view) const override { return true; }
    Outcome insert(std::string_view path, const Value& value) override;
    Outcome insertAll(std::string_view path, const std::vector<Entry>& entries,
                      std::size_t& refused) override;
    Outcome replaceAll(std::string_view path, const std::vector<Entry>& entries,
                       std::size_t& refused) override;
    std::optional<Outcome> insertElement(std::string_view path, const std::vector<Entry>& entries) override;
    std::optional<Outcome> moveElement(std::string_view path, std::string_view newPath) override;
    Outcome remove(std::string_view path) override;
    std::optional<Outcome> rename(std::string_view path, std::string_view name) override;
    std::optional<Excerpt> excerpt(std::string_view path) const override;
    bool hasComments(std::string_view path) const override;
    bool insertExcerpt(std::string_view path, const Excerpt& excerpt) override;
    Outcome removeExcerpt(std::string_view path) override;
    bool removalMovesGroups(std::string_view path) const override;
    bool removalMovesSiblings(std::string_view path) const override;
    SiblingPlace placeOf(std::string_view path) const override;
    bool contains(std::string_view path) const override { return file->find(path) != noNode; }
    std::optional<bool> isArray(std::string_view path) const override;
    bool isLinked(std::string_view path) const override;
    std::optional<Value> valueAt(std::string_view path) const override;
    std::optional<Span> locate(std::string_view path) const override;
    void visitSpans(const SpanVisitor& visitor) const override;
    TextMarks getMarks() const override;
    TextEncoding getEncoding() const override { return file->encoding; }
    std::optional<std::string> spell(std::string_view path) const override;
    Outcome respell(std::string_view path, std::string_view spelling) override;
    std::string getBytes() const override { return file->write(); }

private:
    // Before an edit of more than one value.
    void makeRoom();
    Outcome remove(std::string_view path, bool withComments);

    // Whether a value can become a text, or anything else.
    Outcome checkKind(std::string_view path, NodeId valueNode, std::string_view spelling) const;

    std::unique_ptr<TomlFile> file = std::make_unique<TomlFile>(std::string(), TextEncoding());
};

} // namespace Repository::Documents
