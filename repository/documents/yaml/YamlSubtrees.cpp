#include "repository/documents/yaml/YamlSubtrees.h"

#include "repository/documents/common/ExcerptText.h"
#include "repository/documents/yaml/YamlDocuments.h"
#include "repository/documents/yaml/YamlTokens.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

Outcome noPlace()
{
    return refused(Reason::tr("it has no place there as it is written"));
}

// The text of an excerpt with a name in the place of all that is in front of its value.
std::string textOf(const Excerpt& excerpt, std::size_t value, std::string_view name,
                   std::string_view indentation)
{
    Excerpt renamed = excerpt;
    renamed.names = {{0, value}};
    return excerptText(renamed, name, indentation);
}

// Between brackets, the first line is written without its indentation.
std::string withComments(const std::string& item, const Excerpt& excerpt, const std::string& indentation)
{
    const std::string above = indentedLines(excerpt.above, excerpt.indentation, indentation);
    return above.empty() ? item : above.substr(indentation.size()) + indentation + item;
}

} // namespace

std::optional<YamlSubtrees::Piece> YamlSubtrees::read(const Excerpt& excerpt) const
{
    const std::size_t column = excerpt.indentation.size();
    YamlFile whole(std::string(column, ' ') + excerpt.text + file.lineEnd, TextEncoding());
    if (!whole.readText(true).ok() || whole.tree.node(whole.tree.getRoot()).count != 1)
        return {};
    const YamlNode& root = whole.tree.node(whole.tree.getRoot());
    const YamlNode& only = whole.tree.node(root.first);
    Piece piece;
    piece.isElement = root.isSequence();
    piece.isCollection = only.style == YamlStyle::Block && only.count > 0;
    piece.isBlock = piece.isCollection || only.isBlockScalar();
    piece.hasBelow = hasYamlComment(whole.tree.getOriginal(), only.valueEnd, whole.tree.getOriginal().size());
    piece.value = piece.isElement ? 1 : excerpt.text.find(':', only.keyEnd - column) + 1;
    piece.content = only.begin - column;
    return root.isFlow() || piece.value == 0 || piece.content < piece.value ? std::nullopt
                                                                            : std::optional(piece);
}

// A block goes below a key, but begins behind "-" where no comment is between.
std::string YamlSubtrees::entryText(const Excerpt& excerpt, const Piece& piece, const std::string& key,
                                    const std::string& indentation) const
{
    const bool isElement = key.empty();
    std::string text = textOf(excerpt, piece.value, isElement ? "-" : key + ':', indentation);
    if (isElement == piece.isElement || !piece.isCollection)
        return text;
    const std::size_t line = findYamlLine(excerpt.text, piece.content);
    if (!isElement)
        return line > 0 ? text : text.insert(key.size() + 1, file.lineEnd + indentation + ' ');
    constexpr std::size_t least = 2; // columns from the "-" to what is behind it
    const std::size_t lines = skipYamlLine(text, 0);
    const std::size_t body =
        skipYamlTrivia(excerpt.text, std::max(piece.content, skipYamlLine(excerpt.text, 0)));
    const std::size_t further = columnOfYaml(excerpt.text, body) - excerpt.indentation.size();
    if (further < least)
        text.replace(
            lines, std::string::npos,
            indentedLines(text.substr(lines), indentation, indentation + std::string(least - further, ' ')));
    const std::size_t content = skipYamlTrivia(text, 1);
    if (content < lines || hasYamlComment(text, 1, content)) // a tag stays behind the "-"
        return text;
    const std::size_t own = columnOfYaml(text, content) - indentation.size();
    return text.replace(1, content - 1, own - 1, ' ');
}

Outcome YamlSubtrees::insertMember(YamlEditor& editor, NodeId map, const std::string& key,
                                   const Excerpt& excerpt) const
{
    const auto piece = read(excerpt);
    if (!piece)
        return noPlace();
    const std::string former =
        piece->isElement ? std::string() : excerpt.text.substr(0, excerpt.names.front().second);
    const auto column = editor.blockColumnOf(map);
    const std::string name = spellYamlKey(key, former, !column);
    return column ? editor.insertLines(map, linesOf(excerpt, *piece, name, *column))
                  : insertItem(editor, map, tree.node(map).count, name, excerpt, *piece);
}

Outcome YamlSubtrees::insertElement(YamlEditor& editor, NodeId sequence, std::size_t position,
                                    const Excerpt& excerpt) const
{
    const auto piece = read(excerpt);
    if (!piece)
        return noPlace();
    const auto column = editor.blockColumnOf(sequence);
    return column ? editor.insertLinesAt(sequence, position, linesOf(excerpt, *piece, {}, *column))
                  : insertItem(editor, sequence, position, {}, excerpt, *piece);
}

// What is in it begins a line of its own, after the comments that were between that and its name.
Outcome YamlSubtrees::insertDocument(YamlEditor& editor, std::size_t position, const Excerpt& excerpt) const
{
    const auto piece = read(excerpt);
    if (!piece)
        return noPlace();
    const std::size_t shift = excerpt.indentation.size();
    const std::string text = std::string(shift + piece->value, ' ') + excerpt.text.substr(piece->value);
    const std::size_t content = shift + piece->content;
    const std::size_t line = findYamlLine(text, content);
    const std::string column(content - line, ' ');
    std::string lines = indentedLines(excerpt.above, excerpt.indentation, {});
    if (hasYamlComment(text, 0, content))
        lines +=
            indentedLines(text.substr(skipYamlBlanks(text, 0), line - skipYamlBlanks(text, 0)), column, {});
    lines += piece->isCollection ? indentedLines(text.substr(line), column, {}) : text.substr(content);
    lines += excerpt.after + file.lineEnd;
    return YamlDocuments(file).insert(editor, position, withLineEnds(lines, excerpt, file.lineEnd));
}

std::string YamlSubtrees::linesOf(const Excerpt& excerpt, const Piece& piece, const std::string& key,
                                  std::size_t column) const
{
    const std::string indentation(column, ' ');
    const std::string above = indentedLines(excerpt.above, excerpt.indentation, indentation);
    const std::string text = entryText(excerpt, piece, key, indentation);
    return withLineEnds(above + indentation + text + excerpt.after, excerpt, file.lineEnd) + file.lineEnd;
}

Outcome YamlSubtrees::insertItem(YamlEditor& editor, NodeId flow, std::size_t position,
                                 const std::string& key, const Excerpt& excerpt, const Piece& piece) const
{
    const auto indentation = layout.itemIndentation(flow);
    const bool hasLines = hasYamlBreak(excerpt.text) || !excerpt.above.empty() || !excerpt.after.empty();
    const bool isNothing = piece.content == excerpt.text.size(); // some readers refuse a ":" beside a bracket
    if (isNothing || piece.isBlock || piece.hasBelow || (hasLines && !indentation))
        return noPlace();
    std::string item =
        textOf(excerpt, piece.value, key.empty() ? key : key + ':', indentation.value_or(std::string()));
    if (key.empty())
        item.erase(0, skipYamlBlanks(item, 0));
    item = withComments(item, excerpt, indentation.value_or(std::string()));
    return editor.insertItem(flow, position, withLineEnds(item, excerpt, file.lineEnd), excerpt.after);
}

} // namespace Repository::Documents
