#include "repository/documents/common/BracketItems.h"

#include "repository/documents/common/TextLine.h"

#include <algorithm>

namespace Repository::Documents {

std::string_view BracketItems::item(std::size_t index) const
{
    return text.substr(items[index].begin, items[index].end - items[index].begin);
}

// The end of the line at an offset if only blanks and a comment come before it, or the offset itself.
std::size_t BracketItems::lineTail(std::size_t at) const
{
    const std::size_t next = std::min(text.find_first_not_of(" \t", at), text.size() - 1);
    return text[next] == '#' || isLineEnd(text[next]) ? text.find_first_of("\r\n", next) : at;
}

bool BracketItems::beginsLine(std::size_t index) const
{
    const std::size_t begin = items[index].begin;
    const std::size_t blanks = text.find_last_not_of(" \t", begin - 1);
    return isLineEnd(text[blanks]);
}

std::string BracketItems::indentationOf(std::size_t index) const
{
    const std::size_t begin = items[index].begin;
    const std::size_t line = text.find_last_not_of(" \t", begin - 1) + 1;
    return std::string(text.substr(line, begin - line));
}

std::string BracketItems::separator() const
{
    const bool isTight = items.size() > 1 && items[0].comma + 1 == items[1].begin;
    return isTight ? "," : ", ";
}

void BracketItems::replace(std::size_t index, std::string replacement)
{
    edits.push_back({items[index].begin, items[index].end, std::move(replacement)});
}

void BracketItems::insert(std::size_t index, const std::vector<std::string>& inserted,
                          std::string_view comment, std::string_view above)
{
    if (inserted.empty())
        return;
    if (items.empty())
        fill(inserted);
    else if (insertsLines(index))
        insertLines(index, inserted, comment, above);
    else
        insertInLine(index, inserted);
}

void BracketItems::fill(const std::vector<std::string>& inserted)
{
    const bool hasComment = text.find('#') != npos;
    std::string joined;
    for (const std::string& item : inserted)
        joined += (joined.empty() ? "" : ", ") + item;
    const std::size_t closing = text.size() - 1;
    if (hasComment) // it ends with a line end
        edits.push_back({closing, closing, std::move(joined)});
    else
        edits.push_back({1, closing, isOneLine ? ' ' + joined + ' ' : joined});
}

void BracketItems::insertLines(std::size_t index, const std::vector<std::string>& inserted,
                               std::string_view comment, std::string_view above)
{
    const std::string indentation = indentationOf(index == 0 ? 0 : index - 1);
    const bool isLast = index == items.size();
    const bool endsInComma = items.back().comma != npos;
    std::string lines;
    for (std::size_t at = 0; at < above.size();) {
        const TextLine line = textLineAt(above, at);
        ((lines += lineEnd) += indentation) += trimBlanks(line.content);
        at = line.end;
    }
    for (std::size_t i = 0; i < inserted.size(); ++i) {
        const bool hasComma = !isLast || endsInComma || i + 1 < inserted.size();
        ((lines += lineEnd) += indentation) += inserted[i] + (hasComma ? "," : "");
    }
    lines += comment;
    std::size_t at = 1;
    if (index > 0) {
        const Item& before = items[index - 1];
        if (before.comma == npos)
            edits.push_back({before.end, before.end, ","});
        at = (before.comma == npos ? before.end : before.comma + 1);
    }
    at = lineTail(at);
    const bool breaksLine = !isLineEnd(text[at]) && (!isLast || !comment.empty());
    edits.push_back({at, at, breaksLine ? lines + std::string(lineEnd) + indentation : lines});
}

void BracketItems::insertInLine(std::size_t index, const std::vector<std::string>& inserted)
{
    std::string joined;
    for (const std::string& item : inserted) {
        if (index == items.size())
            joined += separator() + item;
        else
            joined += item + separator();
    }
    if (index < items.size()) {
        edits.push_back({items[index].begin, items[index].begin, std::move(joined)});
        return;
    }
    edits.push_back({items.back().end, items.back().end, std::move(joined)});
}

void BracketItems::remove(std::size_t from, std::size_t count, bool withCommentsAbove)
{
    if (count == 0)
        return;
    const std::size_t last = from + count - 1;
    const std::size_t after = items[last].comma == npos ? items[last].end : items[last].comma + 1;
    const std::size_t tail = lineTail(after);
    if (beginsLine(from) && isLineEnd(text[tail]) && !isOneLine && !hasCommentBeforeComma(last))
        removeLines(from, last, withCommentsAbove);
    else
        removeInLine(from, last);
}

bool BracketItems::hasCommentBeforeComma(std::size_t index) const
{
    const Item& item = items[index];
    return item.comma != npos && text.substr(item.end, item.comma - item.end).find('#') != npos;
}

void BracketItems::removeLines(std::size_t from, std::size_t last, bool withCommentsAbove)
{
    const auto around = withCommentsAbove ? surroundingsOf(from) : std::nullopt;
    const std::size_t line = around ? around->above : text.find_last_not_of(" \t", items[from].begin - 1) + 1;
    const bool hasComma = items[last].comma != npos;
    const std::size_t tail = lineTail(hasComma ? items[last].comma + 1 : items[last].end);
    if (!hasComma && from > 0)
        edits.push_back({items[from - 1].comma, items[from - 1].comma + 1, {}});
    edits.push_back({line, textLineAt(text, tail).end, {}});
}

void BracketItems::removeInLine(std::size_t from, std::size_t last)
{
    const bool isEnd = last + 1 == items.size();
    const std::size_t begin = items[from].begin;
    const std::size_t end = items[last].comma == npos ? items[last].end : items[last].comma + 1;
    const auto hasComment = [this](std::size_t start, std::size_t stop) {
        return text.substr(start, stop - start).find('#') != npos;
    };
    if (hasCommentBeforeComma(last)) { // which stays, without the comma
        const std::size_t next = isEnd ? end : items[last + 1].begin;
        edits.push_back({begin, items[last].end, {}});
        edits.push_back({items[last].comma, hasComment(end, next) ? end : next, {}});
    } else if (!isEnd) {
        const std::size_t next = items[last + 1].begin;
        edits.push_back({begin, hasComment(end, next) ? end : next, {}});
    } else if (from > 0) {
        const bool keepsComma = items[last].comma != npos;
        const std::size_t comma = items[from - 1].comma + (keepsComma ? 1 : 0);
        const bool keeps = hasComment(comma, begin);
        edits.push_back({comma, !keeps ? end : keepsComma ? comma : comma + 1, {}});
        if (keeps)
            edits.push_back({begin, end, {}});
    } else if (end < text.size() && isBlankLine(text.substr(1, begin - 1)) && // not in a pair without braces
               isBlankLine(text.substr(end, text.size() - 1 - end))) {
        edits.push_back({1, text.size() - 1, {}});
    } else {
        edits.push_back({begin, end, {}});
    }
}

// Nothing for an item that shares a line, or whose comma comes after a comment.
std::optional<BracketItems::Surroundings> BracketItems::surroundingsOf(std::size_t index) const
{
    const Item& item = items[index];
    const bool hasComma = item.comma != npos;
    if (!beginsLine(index) || (hasComma && text.find_first_not_of(" \t", item.end) != item.comma))
        return {};
    Surroundings found{0, hasComma ? item.comma + 1 : item.end, 0};
    found.end = lineTail(found.tail);
    if (!isLineEnd(text[found.end]))
        return {};
    const std::size_t before = index == 0 ? 1 : items[index - 1].comma + 1;
    const std::size_t lines = textLineAt(text, lineTail(before)).end;
    const std::size_t line = text.find_last_not_of(" \t", item.begin - 1) + 1;
    found.above = lines + findCommentsAbove(text.substr(lines, line - lines));
    return found;
}

std::string_view BracketItems::commentBehind(std::size_t index) const
{
    const auto found = surroundingsOf(index);
    return found ? text.substr(found->tail, found->end - found->tail) : std::string_view();
}

std::string_view BracketItems::commentsAbove(std::size_t index) const
{
    const auto found = surroundingsOf(index);
    const std::size_t line = found ? text.find_last_not_of(" \t", items[index].begin - 1) + 1 : 0;
    return found ? text.substr(found->above, line - found->above) : std::string_view();
}

void BracketItems::move(std::size_t from, std::size_t to)
{
    const auto sourceOf = [=](std::size_t i) { return i == to ? from : from < to ? i + 1 : i - 1; };
    const std::size_t first = std::min(from, to);
    const std::size_t last = std::max(from, to);
    std::vector<Surroundings> lines;
    for (std::size_t i = first; i <= last; ++i) {
        const auto found = surroundingsOf(i);
        if (!found)
            break;
        lines.push_back(*found);
    }
    const bool areLines = lines.size() == last - first + 1;
    for (std::size_t i = first; i <= last; ++i) {
        const std::size_t source = sourceOf(i);
        if (!areLines) {
            replace(i, std::string(item(source)));
            continue;
        }
        const Surroundings& moved = lines[source - first];
        const std::string_view comma = items[i].comma == npos ? "" : ",";
        std::string written(text.substr(moved.above, items[source].end - moved.above));
        (written += comma) += text.substr(moved.tail, moved.end - moved.tail);
        edits.push_back({lines[i - first].above, lines[i - first].end, std::move(written)});
    }
}

std::vector<BracketItems::Edit> BracketItems::getEdits() const
{
    std::vector<Edit> sorted = edits;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const Edit& a, const Edit& b) { return a.begin < b.begin; });
    return sorted;
}

std::string BracketItems::apply() const
{
    std::string result;
    std::size_t at = 0;
    for (const Edit& edit : getEdits()) {
        (result += text.substr(at, edit.begin - at)) += edit.text;
        at = edit.end;
    }
    return result += text.substr(at);
}

} // namespace Repository::Documents
