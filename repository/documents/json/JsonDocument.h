#pragma once

#include "repository/documents/json/JsonFile.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// A json file, optionally with comments and trailing commas. Objects are groups; an array of texts is one
// list; any other array is a group of 0, 1, 2 ... The value of a node with children is its member "#value";
// types that json lacks are in "$types" (JsonTypes). A number that no type holds (1e400) is shown as a text
// of its digits and stays a number, also when replaced by another such number.
class JsonDocument : public Document
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
    bool keepsGivenOrder() const override { return true; }
    std::optional<Outcome> insertElement(std::string_view path, const std::vector<Entry>& entries) override;
    std::optional<Outcome> moveElement(std::string_view path, std::string_view newPath) override;
    Outcome remove(std::string_view path) override;
    std::optional<Outcome> rename(std::string_view path, std::string_view name) override;
    std::optional<Excerpt> excerpt(std::string_view path) const override;
    bool hasComments(std::string_view path) const override;
    bool insertExcerpt(std::string_view path, const Excerpt& excerpt) override;
    Outcome removeExcerpt(std::string_view path) override;
    bool removalMovesSiblings(std::string_view path) const override;
    SiblingPlace placeOf(std::string_view path) const override;
    bool contains(std::string_view path) const override { return file->find(path) != noNode; }
    std::optional<bool> isArray(std::string_view path) const override;
    std::optional<Value> valueAt(std::string_view path) const override;
    std::optional<Span> locate(std::string_view path) const override;
    void visitSpans(const SpanVisitor& visitor) const override;
    TextMarks getMarks() const override;
    std::optional<std::string> spell(std::string_view path) const override;
    Outcome respell(std::string_view path, std::string_view spelling) override;
    std::string getBytes() const override { return file->tree.write(); }

private:
    // True for the value that the node had in the file, whose spelling it gets again.
    bool isOriginal(NodeId valueNode, const Value& value, Type tag) const;
    Outcome checkKind(std::string_view path, NodeId valueNode, JsonKind kind) const;

    // Writes a whole subtree in place of a new entry's value and reads it, or the file anew. False when the
    // entries are not plain, or too few to be worth it.
    bool graft(std::string_view path, const std::vector<Entry>& entries);
    bool canTag(const std::vector<std::pair<std::string, Type>>& types) const;
    bool graftText(NodeId id, const std::string& text);
    bool becomeExcerpt(const Excerpt& excerpt);

    std::unique_ptr<JsonFile> file = std::make_unique<JsonFile>(std::string());
};

} // namespace Repository::Documents
