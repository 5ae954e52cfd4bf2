#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/xml/XmlComponent.h"
#include "repository/documents/xml/XmlEditor.h"
#include "repository/documents/xml/XmlEntities.h"
#include "repository/documents/xml/XmlText.h"
#include "repository/documents/xml/XmlTree.h"
#include "repository/documents/xml/XmlValues.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Repository::Documents {

// An xml file. An element is an entry, the root element too; name[2] is the second of its name among its
// siblings, @name an attribute, #text a text between elements. XmlValues tells what their values are.
// Entities are shown as what they stand for, unless they hold tags or lie outside of the file.
class XmlDocument : public Document
{
public:
    XmlDocument();

    Outcome parse(std::string bytes) override;
    void visit(const std::function<void(const Entry&)>& visitor) const override;
    Outcome set(std::string_view path, const FrameworkCore::Values::Value& value) override;
    Outcome insert(std::string_view path, const FrameworkCore::Values::Value& value) override;
    void beginRun() override;
    Outcome endRun(std::string& refusedPath) override;
    Outcome remove(std::string_view path) override;
    bool removalMovesSiblings(std::string_view path) const override;
    SiblingPlace placeOf(std::string_view path) const override;
    bool contains(std::string_view path) const override;
    std::string getBytes() const override;
    std::optional<Span> locate(std::string_view path) const override;
    std::optional<std::string> spell(std::string_view path) const override;
    Outcome respell(std::string_view path, std::string_view spelling) override;

private:
    // The parts refer to each other, so that they stay where they are.
    struct Content
    {
        explicit Content(std::string text)
            : tree(std::move(text)), values(tree, entities, spelling), editor(tree, values, spelling)
        {
        }

        XmlTree tree;
        XmlEntities entities;
        XmlSpelling spelling;
        XmlValues values;
        XmlEditor editor;

        // While entries come in a run: those that lack something so far.
        struct Lacking
        {
            NodeId node;
            std::string path;
        };
        std::optional<std::vector<Lacking>> run;
    };

    // Where a path leads: the last of its nodes that is there, and the components behind it.
    struct Way
    {
        bool isPath = false;
        NodeId node = noNode;
        std::size_t depth = 0; // of that node
        std::vector<std::string_view> missing;
    };

    Way wayTo(std::string_view path) const;
    NodeId find(std::string_view path) const;
    NodeId findChild(NodeId parent, std::string_view component) const;
    // A node with a value, or why there is none.
    NodeId findValue(std::string_view path, Outcome& outcome) const;
    void appendComponent(std::string& path, NodeId id) const;
    Outcome insertValue(NodeId id, std::string_view path, const FrameworkCore::Values::Value& value);
    Outcome checkWay(const Way& way, const FrameworkCore::Values::Value& value,
                     std::vector<XmlComponent>& steps) const;
    Outcome checkStep(NodeId parent, std::string_view component, const XmlComponent& step) const;
    Outcome checkPrefix(NodeId element, std::string_view name) const;
    Outcome checkSurroundings(NodeId id) const;

    std::unique_ptr<Content> content;
};

} // namespace Repository::Documents
