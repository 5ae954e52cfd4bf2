#pragma once

#include "repository/documents/xml/XmlFile.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// An xml file. Elements are entries, the root too; name[2] is the second of its name, @name an attribute,
// #text a text between elements. Entities are expanded, unless they hold tags or are external.
class XmlDocument : public Document
{
public:
    Outcome parse(std::string bytes) override;
    void visit(const std::function<void(const Entry&)>& visitor) const override;
    Outcome set(std::string_view path, const Value& value) override;
    bool namesType(std::string_view path) const override;
    Outcome insert(std::string_view path, const Value& value) override;
    void beginRun() override { file->run.emplace(); }
    Outcome endRun(std::string& refusedPath) override;
    Outcome remove(std::string_view path) override;
    std::optional<Outcome> rename(std::string_view path, std::string_view name) override;
    std::optional<Excerpt> excerpt(std::string_view path) const override;
    bool hasComments(std::string_view path) const override;
    bool insertExcerpt(std::string_view path, const Excerpt& excerpt) override;
    Outcome removeExcerpt(std::string_view path) override;
    bool removalMovesSiblings(std::string_view path) const override;
    SiblingPlace placeOf(std::string_view path) const override;
    bool contains(std::string_view path) const override { return file->find(path) != noNode; }
    std::string getBytes() const override;
    std::optional<Value> valueAt(std::string_view path) const override;
    std::optional<Span> locate(std::string_view path) const override;
    void visitSpans(const SpanVisitor& visitor) const override;
    TextMarks getMarks() const override;
    TextEncoding getEncoding() const override { return file->spelling.encoding; }
    std::optional<std::string> spell(std::string_view path) const override;
    Outcome respell(std::string_view path, std::string_view spelling) override;

private:
    void walk(const std::function<void(std::string& path, NodeId id)>& walker) const;

    // An edit after which other values may be read in another way; it is refused then.
    Outcome editReading(const std::function<Outcome()>& edit);
    bool mayChangeReading(std::string_view path) const;
    Outcome setValue(std::string_view path, const Value& value);
    Outcome removeNode(std::string_view path);

    // A node with a value, or why there is none.
    NodeId findValue(std::string_view path, Outcome& outcome) const;

    std::unique_ptr<XmlFile> file = std::make_unique<XmlFile>(std::string());
};

} // namespace Repository::Documents
