#pragma once

#include "repository/documents/yaml/YamlEditor.h"
#include "repository/documents/yaml/YamlFile.h"

#include <optional>
#include <string>

namespace Repository::Documents {

// Adds, takes out and moves documents of a file that has several, as elements of its stream: each with its
// "---", the directives above that and the comments up to the next one.
class YamlDocuments
{
public:
    explicit YamlDocuments(const YamlFile& yamlFile) : file(yamlFile), tree(yamlFile.tree), layout(yamlFile)
    {
    }

    // Before the one of that position, or after the last. The text is that of a document without its mark.
    Outcome insert(YamlEditor& editor, std::size_t position, const std::string& lines) const;

    // One that is not one of two only.
    void remove(YamlEditor& editor, NodeId document, bool withComments) const;

    // One as an element of a list, with the comments in front of what is in it. Nothing for one that depends
    // on what is around it.
    std::optional<Excerpt> excerptOf(NodeId document) const;

    // Whether comments in front of what is in it, or behind that, go with it.
    bool hasCommentsAround(NodeId document) const;

    bool hasCommentsBehind(NodeId document) const;

    Outcome move(YamlEditor& editor, std::size_t from, std::size_t to) const;

    // Where the lines of the next one begin.
    std::size_t endOf(NodeId document) const;

private:
    // The lines of a document. What they begin with tells whether others may take its place.
    struct Lines
    {
        std::size_t begin = 0; // of its directives or "---", or of what is in it
        std::size_t mark = 0;  // its "---", npos without one
        std::size_t ended = 0; // the "..." above it, npos without one
        bool hasDirectives = false;
    };

    Lines linesOf(NodeId document) const;
    std::string commentsInFront(NodeId document) const;
    std::string_view text() const { return tree.getOriginal(); }

    const YamlFile& file;
    const YamlTree& tree;
    YamlLayout layout;
};

} // namespace Repository::Documents
