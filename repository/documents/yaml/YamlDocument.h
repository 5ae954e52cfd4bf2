#pragma once

#include "repository/documents/yaml/YamlFile.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

class YamlEditor;
struct YamlBranch;

// What a file should have at a path. Values are not copied, since they may be large.
struct YamlWanted
{
    std::string path;
    const Value* value;
};

// A file of YAML 1.2. Maps are groups; a list of texts is one value, any other a group of 0, 1, 2 ..., and so
// are the documents of a file that has several. An alias shows what it leads to, and a map what it merges,
// which changes with that. The value of a map with entries is its member "#value"; a comment line above a
// value tags a type that YAML lacks.
class YamlDocument : public Document
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
    Outcome remove(std::string_view path) override { return remove(path, false); }
    std::optional<Outcome> rename(std::string_view path, std::string_view name) override;
    std::optional<Excerpt> excerpt(std::string_view path) const override;
    bool hasComments(std::string_view path) const override;
    std::size_t countTags(std::string_view path) const override;
    bool insertExcerpt(std::string_view path, const Excerpt& excerpt) override;
    Outcome removeExcerpt(std::string_view path) override { return remove(path, true); }
    bool removalMovesSiblings(std::string_view path) const override;
    SiblingPlace placeOf(std::string_view path) const override;
    bool contains(std::string_view path) const override { return file->find(path) != noNode; }
    std::optional<bool> isArray(std::string_view path) const override;
    Origin originOf(std::string_view path) const override;
    std::string sourceOf(std::string_view path) const override;
    std::vector<std::string> followersOf(std::string_view path) const override;
    bool isLinked(std::string_view path) const override;
    std::optional<Value> valueAt(std::string_view path) const override;
    std::optional<Span> locate(std::string_view path) const override;
    void visitSpans(const SpanVisitor& visitor) const override;
    TextMarks getMarks() const override;
    TextEncoding getEncoding() const override { return file->encoding; }
    std::string comment(std::string_view path) const override;
    std::optional<std::string> spell(std::string_view path) const override;
    Outcome respell(std::string_view path, std::string_view spelling) override;
    std::string getBytes() const override { return file->write(); }

private:
    // Reads the text with the edits so far, so that its tree is as it was read.
    void settle();
    bool settleValue(NodeId id);
    bool isOneOfSeveral(NodeId document) const;

    // Reads the text with other edits; nothing is changed where that is not YAML or anything else is changed.
    enum class Kind { Insertion, Renaming, Moving, Removal };
    Outcome commit(const YamlEditor& editor, Kind kind = Kind::Insertion, NodeId node = noNode,
                   const std::function<bool(const YamlFile&)>& isAsWanted = {});
    std::optional<Outcome> rereadPart(const YamlEditor& editor, Kind kind, NodeId node,
                                      const std::function<bool(const YamlFile&)>& isAsWanted);
    Outcome remove(std::string_view path, bool withComments);
    Outcome insertBranch(std::string_view path, YamlBranch branch, std::vector<YamlWanted> expected);
    Outcome checkShape(std::string_view path, NodeId id, bool isGone) const;
    Outcome setElements(std::string_view path, const Value& value);
    Outcome restore(std::string_view path, NodeId valueNode);
    Outcome respellLinked(std::string_view path, std::string_view spelling);
    Outcome respellAlias(std::string_view path, NodeId valueNode, std::string_view spelling);
    Outcome put(NodeId valueNode, const std::string& spelling);
    bool isSmall() const;
    bool isReadAlike() const;
    Outcome rewrite(std::string_view path, const std::string& spelling, Type tag);
    std::string explainNoForm(NodeId valueNode, const Value& value) const;

    std::unique_ptr<YamlFile> file = makeEmpty();
    static std::unique_ptr<YamlFile> makeEmpty();
};

} // namespace Repository::Documents
