#pragma once

#include "repository/documents/xml/XmlEntities.h"
#include "repository/documents/xml/XmlText.h"
#include "repository/documents/xml/XmlTree.h"
#include "repository/documents/xml/XmlTypeTag.h"

#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// Reads and writes the values of nodes. Blanks around an element's text are layout, unless a reference or
// CDATA spells them; only plainly spelled numbers and truth values are such. An empty element is a group when
// it closes itself or holds a comment or line break, as if for children, and otherwise an empty text.
class XmlValues
{
public:
    XmlValues(XmlTree& syntaxTree, const XmlEntities& fileEntities, const XmlSpelling& fileSpelling)
        : tree(syntaxTree), entities(fileEntities), spelling(fileSpelling)
    {
    }

    // A group for a node without a value.
    Value read(NodeId id) const;

    // True when it has this very value.
    bool holds(NodeId id, const Value& value) const;

    // Whether a type tag or CDATA says of which type its value is.
    bool namesType(NodeId id) const;

    // How a value is spelled, or why it cannot be.
    struct Spelled
    {
        std::string text;
        std::optional<XmlTypeTag>
            tag; // which the node is to have, when its spelling alone would be read otherwise
        std::string error;
    };
    Spelled spell(NodeId id, const Value& value) const;

    // In a new node of that kind; quote is that of an attribute.
    Spelled spellNew(XmlKind kind, char quote, const Value& value, bool keepsBlanks = false) const;

    // The value as the file spells it; "<" and the end of the tag for a typed element that closes itself.
    std::string spellingOf(NodeId id) const;

    // Why a text cannot be the spelling of a value in this place; empty when it can.
    std::string explainMisspelling(NodeId id, std::string_view spelling) const;

    // Opens an element that closes itself.
    void open(NodeId element);

    // Puts a spelling in the place of the node's value.
    void put(NodeId id, std::string spelling);

private:
    // What decides, beside its spelling, which value it is.
    struct Context
    {
        XmlKind kind = XmlKind::Element;
        bool closesItself = false;
        bool isOpen = false; // there is a comment or a line break around the value
        char quote = '\0';
        bool keepsBlanks = false; // around a text they belong to it
        bool isOfTokens = false;  // an attribute whose blanks only set words apart
        std::optional<XmlTypeTag> tag;
    };

    std::optional<XmlTypeTag> tagOf(NodeId id) const;
    Spelled spellIn(const Context& context, NodeId id, const Value& value) const;
    Context contextOf(NodeId id) const;
    Value interpret(const Context& context, std::string_view spelled) const;
    Value interpretPlain(const Context& context, std::string_view spelled, const std::string& text) const;
    // The spelling of a text that is read as nothing but a text, where there is one.
    std::optional<std::string> spellAsText(const Context& context, std::string_view text) const;
    // The same with the references that the current spelling has around what changes.
    std::optional<std::string> spellAround(const Context& context, std::string_view current,
                                           std::string_view text) const;
    std::string spellPlain(const Context& context, std::string_view text) const;
    bool staysClosed(NodeId id) const;
    bool isReferenceKnown(std::string_view reference) const;

    XmlTree& tree;
    const XmlEntities& entities;
    const XmlSpelling& spelling;
};

} // namespace Repository::Documents
