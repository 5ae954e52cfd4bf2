#include "repository/documents/yaml/YamlDocuments.h"

#include "repository/documents/common/ExcerptText.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/yaml/YamlTokens.h"

#include <algorithm>
#include <vector>

namespace Repository::Documents {

namespace {

constexpr auto npos = std::string_view::npos;

bool isMark(std::string_view line, std::string_view mark)
{
    return startsWith(line, mark) &&
           (line.size() == mark.size() || isYamlBlank(line[mark.size()]) || isYamlBreak(line[mark.size()]));
}

std::string withLineEnd(std::string text, const std::string& lineEnd)
{
    return endsLine(text) ? text : text + lineEnd;
}

} // namespace

YamlDocuments::Lines YamlDocuments::linesOf(NodeId document) const
{
    const YamlNode& node = tree.node(document);
    Lines found{npos, npos, npos, false};
    std::size_t at = 0;
    if (node.previous != noNode) {
        const std::size_t former = tree.node(node.previous).valueEnd;
        at = former == findYamlLine(text(), former) ? former : skipYamlLine(text(), former);
    }
    std::size_t afterEnd = at;
    for (; at <= node.begin && at < text().size(); at = skipYamlLine(text(), at)) {
        const std::string_view line = text().substr(at);
        if (isMark(line, "...")) {
            found = {npos, npos, at, false};
            afterEnd = skipYamlLine(text(), at);
        } else if (line[0] == '%') {
            found.begin = found.hasDirectives ? found.begin : at;
            found.hasDirectives = true;
        } else if (isMark(line, "---")) {
            found.mark = at;
            found.begin = found.hasDirectives ? found.begin : at;
            return found;
        }
    }
    found.begin = node.previous == noNode ? findYamlLine(text(), node.begin) : afterEnd;
    return found;
}

// The "..." above directives stays with the document before them.
std::size_t YamlDocuments::endOf(NodeId document) const
{
    const NodeId next = tree.node(document).next;
    return next == noNode ? text().size() : linesOf(next).begin;
}

Outcome YamlDocuments::insert(YamlEditor& editor, std::size_t position, const std::string& lines) const
{
    const NodeId next = tree.elementAt(tree.getRoot(), position);
    const std::string mark = "---" + file.lineEnd;
    if (next == noNode) {
        const std::size_t end = text().size();
        editor.replace(end, end, (endsLine(text()) ? "" : file.lineEnd) + mark + lines);
        return {};
    }
    const Lines place = linesOf(next);
    if (place.hasDirectives)
        return outcomeAt(text(), place.begin,
                         Reason::tr("a document before directives would take them over"));
    const bool isBareTop = position == 0 && place.mark == npos;
    const std::size_t at = isBareTop ? 0 : place.begin;
    editor.replace(at, at, (isBareTop ? "" : mark) + lines + (place.mark == npos ? mark : ""));
    return {};
}

void YamlDocuments::remove(YamlEditor& editor, NodeId document, bool withComments) const
{
    const YamlNode& node = tree.node(document);
    const Lines lines = linesOf(document);
    std::size_t begin = lines.begin;
    if (withComments && node.previous == noNode && lines.mark == npos && !node.isLeaf())
        begin = node.first == noNode ? begin : layout.commentsAbove(node.first);
    std::size_t end = endOf(document);
    if (node.next != noNode && node.previous != noNode) {
        const Lines next = linesOf(node.next);
        end = next.hasDirectives && next.ended != npos ? next.ended : end;
    }
    editor.replace(begin, end, {});
}

std::optional<Excerpt> YamlDocuments::excerptOf(NodeId document) const
{
    const YamlNode& node = tree.node(document);
    const std::size_t line = findYamlLine(text(), node.begin);
    const Lines lines = linesOf(document);
    if (node.isAlias || lines.hasDirectives || layout.hasAnchors(document) || layout.endsOpen(document))
        return {};
    Excerpt found;
    found.lineEnd = file.lineEnd;
    found.indentation = std::string(lines.mark == line ? 0 : node.begin - line, ' ');
    const std::string_view value = tree.text(node.begin, node.valueEnd);
    const std::size_t firstEnd = textLineAt(value, 0).end;
    (found.text = "- ").append(value.substr(0, firstEnd)) += indentedLines(value.substr(firstEnd), {}, "  ");
    found.names.emplace_back(0, 1);
    findLines(found);
    found.above = commentsInFront(document);
    found.after = tree.text(node.valueEnd, skipYamlTail(text(), node.valueEnd));
    found.after.resize(found.after.find_last_not_of(" \t") + 1);
    return found;
}

// That behind its "---" first.
std::string YamlDocuments::commentsInFront(NodeId document) const
{
    const YamlNode& node = tree.node(document);
    const std::size_t line = findYamlLine(text(), node.begin);
    const std::size_t mark = linesOf(document).mark;
    if (mark == line)
        return {};
    if (mark == npos)
        return std::string(node.first == noNode ? "" : tree.text(layout.commentsAbove(node.first), line));
    const std::size_t comment = text().find_first_not_of("- \t", mark);
    const bool isBehindMark = text()[comment] == '#';
    return std::string(tree.text(isBehindMark ? comment : skipYamlLine(text(), mark), line));
}

bool YamlDocuments::hasCommentsBehind(NodeId document) const
{
    const std::size_t tail = skipYamlTail(text(), tree.node(document).valueEnd);
    return hasYamlComment(text(), tail, endOf(document));
}

bool YamlDocuments::hasCommentsAround(NodeId document) const
{
    const YamlNode& node = tree.node(document);
    const std::size_t begin = linesOf(document).begin;
    return (begin < node.begin && hasYamlComment(text(), begin, node.begin)) ||
           hasYamlComment(text(), node.valueEnd, endOf(document));
}

Outcome YamlDocuments::move(YamlEditor& editor, std::size_t from, std::size_t to) const
{
    const std::string mark = "---" + file.lineEnd;
    const std::size_t first = std::min(from, to);
    const std::size_t last = std::max(from, to);
    std::vector<std::string> texts;
    std::size_t begin = 0;
    bool isBare = false;
    for (std::size_t i = first; i <= last; ++i) {
        const NodeId document = tree.elementAt(tree.getRoot(), i);
        const Lines lines = linesOf(document);
        if (lines.hasDirectives || lines.ended != npos)
            return outcomeAt(
                text(), std::min(lines.begin, lines.ended),
                Reason::tr(
                    "directives and \"...\" stay where they are, and so do the documents around them"));
        begin = i == first ? lines.begin : begin;
        isBare = isBare || lines.mark == npos;
        texts.push_back((lines.mark == npos ? mark : "") +
                        withLineEnd(std::string(tree.text(lines.begin, endOf(document))), file.lineEnd));
    }
    const auto moved = texts.begin() + std::ptrdiff_t(from - first);
    if (from < to)
        std::rotate(moved, moved + 1, texts.end());
    else
        std::rotate(texts.begin(), texts.end() - 1, texts.end());
    std::string all;
    for (const std::string& each : texts)
        all += each;
    if (isBare && startsWith(all, mark))
        all.erase(0, mark.size());
    const std::size_t end = endOf(tree.elementAt(tree.getRoot(), last));
    if (!endsLine(tree.text(begin, end)))
        all.resize(all.find_last_not_of("\r\n") + 1);
    editor.replace(begin, end, std::move(all));
    return {};
}

} // namespace Repository::Documents
