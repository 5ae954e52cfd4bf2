#pragma once

#include "repository/documents/xml/XmlLayout.h"
#include "repository/documents/xml/XmlText.h"
#include "repository/documents/xml/XmlTree.h"
#include "repository/documents/xml/XmlValues.h"

#include <string>
#include <string_view>

namespace Repository::Documents {

// Edits a tree and its layout. Whether an edit is allowed was decided before.
class XmlEditor
{
public:
    XmlEditor(XmlTree& syntaxTree, XmlValues& treeValues, const XmlSpelling& fileSpelling)
        : tree(syntaxTree), values(treeValues), spelling(fileSpelling),
          layout(syntaxTree, fileSpelling.lineEnd)
    {
    }

    // Makes the root element in a text without one, with a declaration before it.
    NodeId createRoot(std::string_view name);

    // A new node with the next number of its name: elements after those of that name, or else last, like
    // attributes and texts. In a run each comes after the one before, unless the parent was read from the
    // file.
    NodeId append(NodeId parent, const XmlKey& key, bool isInRun);

    // The quote of a new attribute of an element.
    char quoteFor(NodeId element) const;

    // Gives its first value to a node that was appended, or to an element with nothing in it.
    void give(NodeId id, XmlValues::Spelled value);

    // Gives a node that has a value another one; its type tag becomes that of the value.
    void change(NodeId id, XmlValues::Spelled value);

    // Restores a former spelling, with the comments in it that another value had moved after itself.
    void respell(NodeId id, std::string_view spelled);

    // What is in an element that has neither value nor children.
    std::string contentOf(NodeId element) const;

    // True when the texts around a node would become one, or the value of their parent, without it.
    bool joinsTexts(NodeId id) const;

    // Of a node other than the root.
    void remove(NodeId id);

    // Gives an element or attribute another name, which no sibling has.
    void rename(NodeId id, std::string_view name);

    XmlLayout& getLayout() { return layout; }

    // True when nothing but the declaration of xml and type tags is around the root.
    bool standsAlone(NodeId root) const;

private:
    void renameDoctype(std::string_view former, std::string_view name);
    void setApart(NodeId id, std::string_view punctuation, char beside);
    void fillElement(NodeId id);
    NodeId appendAttribute(NodeId element, const XmlKey& key);
    NodeId appendFirst(NodeId parent, const XmlKey& key);
    void joinTexts(NodeId text, NodeId following);
    void empty(NodeId element, std::string trivia);
    void dissolve(NodeId element);

    XmlTree& tree;
    XmlValues& values;
    const XmlSpelling& spelling;
    XmlLayout layout;
};

} // namespace Repository::Documents
