#include "repository/documents/toml/TomlItems.h"

#include "repository/documents/toml/TomlEditor.h"
#include "repository/documents/toml/TomlTokens.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

// After the member or value at an offset.
std::size_t skipItem(std::string_view text, std::size_t at, bool isMember)
{
    while (isMember) {
        const TomlKeyPart part = readTomlKeyPart(text, at);
        at = part.next;
        if (part.isLast) {
            at = skipTomlBlanks(text, at + 1);
            break;
        }
    }
    return skipTomlValue(text, at);
}

} // namespace

TomlItems::TomlItems(std::string_view bracketed, std::string_view fileLineEnd)
    : text(bracketed), lineEnd(fileLineEnd)
{
    for (std::size_t at = skipTomlTrivia(text, 1); at + 1 < text.size();) {
        Item item{at, skipItem(text, at, isTable()), npos};
        at = skipTomlTrivia(text, item.end);
        if (text[at] == ',') {
            item.comma = at;
            at = skipTomlTrivia(text, at + 1);
        }
        items.push_back(item);
    }
}

std::string_view TomlItems::item(std::size_t index) const
{
    return text.substr(items[index].begin, items[index].end - items[index].begin);
}

// The end of the line at an offset if only blanks and a comment come before it, or the offset itself.
std::size_t TomlItems::lineTail(std::size_t at) const
{
    const std::size_t next = skipTomlBlanks(text, at);
    if (text[next] != '#' && text[next] != '\n' && text[next] != '\r')
        return at;
    const std::size_t end = text.find('\n', next);
    return text[end - 1] == '\r' ? end - 1 : end;
}

bool TomlItems::beginsLine(std::size_t index) const
{
    const std::size_t begin = items[index].begin;
    const std::size_t blanks = text.find_last_not_of(" \t", begin - 1);
    return text[blanks] == '\n';
}

std::string TomlItems::indentationOf(std::size_t index) const
{
    const std::size_t begin = items[index].begin;
    const std::size_t line = text.find_last_not_of(" \t", begin - 1) + 1;
    return std::string(text.substr(line, begin - line));
}

std::string TomlItems::separator() const
{
    const bool isTight = items.size() > 1 && items[0].comma + 1 == items[1].begin;
    return isTight ? "," : ", ";
}

void TomlItems::replace(std::size_t index, std::string replacement)
{
    edits.push_back({items[index].begin, items[index].end, std::move(replacement)});
}

void TomlItems::insert(std::size_t index, const std::vector<std::string>& inserted)
{
    if (inserted.empty())
        return;
    if (items.empty())
        fill(inserted);
    else if (!isTable() && beginsLine(index == 0 ? 0 : index - 1))
        insertLines(index, inserted);
    else
        insertInLine(index, inserted);
}

void TomlItems::fill(const std::vector<std::string>& inserted)
{
    const bool hasComment = text.find('#') != npos;
    std::string joined;
    for (const std::string& item : inserted)
        joined += (joined.empty() ? "" : ", ") + item;
    const std::size_t closing = text.size() - 1;
    if (hasComment) // it ends with a line end
        edits.push_back({closing, closing, std::move(joined)});
    else
        edits.push_back({1, closing, isTable() ? ' ' + joined + ' ' : joined});
}

void TomlItems::insertLines(std::size_t index, const std::vector<std::string>& inserted)
{
    const std::string indentation = indentationOf(index == 0 ? 0 : index - 1);
    const bool isLast = index == items.size();
    const bool endsInComma = items.back().comma != npos;
    std::string lines;
    for (std::size_t i = 0; i < inserted.size(); ++i) {
        const bool hasComma = !isLast || endsInComma || i + 1 < inserted.size();
        ((lines += lineEnd) += indentation) += inserted[i] + (hasComma ? "," : "");
    }
    std::size_t at = 1;
    if (index > 0) {
        const Item& before = items[index - 1];
        if (before.comma == npos)
            edits.push_back({before.end, before.end, ","});
        at = (before.comma == npos ? before.end : before.comma + 1);
    }
    at = lineTail(at);
    const bool breaksLine = text[at] != '\n' && text[at] != '\r' && !isLast;
    edits.push_back({at, at, breaksLine ? lines + std::string(lineEnd) + indentation : lines});
}

void TomlItems::insertInLine(std::size_t index, const std::vector<std::string>& inserted)
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

void TomlItems::remove(std::size_t from, std::size_t count)
{
    if (count == 0)
        return;
    const std::size_t last = from + count - 1;
    const std::size_t after = items[last].comma == npos ? items[last].end : items[last].comma + 1;
    const std::size_t tail = lineTail(after);
    const bool endsLine = text[tail] == '\n' || text[tail] == '\r';
    if (beginsLine(from) && endsLine && !isTable())
        removeLines(from, last);
    else
        removeInLine(from, last);
}

void TomlItems::removeLines(std::size_t from, std::size_t last)
{
    const std::size_t line = text.find_last_not_of(" \t", items[from].begin - 1) + 1;
    const bool hasComma = items[last].comma != npos;
    const std::size_t tail = lineTail(hasComma ? items[last].comma + 1 : items[last].end);
    if (!hasComma && from > 0)
        edits.push_back({items[from - 1].comma, items[from - 1].comma + 1, {}});
    edits.push_back({line, skipTomlLine(text, tail), {}});
}

void TomlItems::removeInLine(std::size_t from, std::size_t last)
{
    const bool isEnd = last + 1 == items.size();
    const std::size_t begin = items[from].begin;
    const std::size_t end = items[last].comma == npos ? items[last].end : items[last].comma + 1;
    const auto hasComment = [this](std::size_t start, std::size_t stop) {
        return text.substr(start, stop - start).find('#') != npos;
    };
    if (!isEnd) {
        const std::size_t next = items[last + 1].begin;
        edits.push_back({begin, hasComment(end, next) ? end : next, {}});
    } else if (from > 0) {
        const bool keepsComma = items[last].comma != npos;
        const std::size_t comma = items[from - 1].comma + (keepsComma ? 1 : 0);
        const bool keeps = hasComment(comma, begin);
        edits.push_back({comma, !keeps ? end : keepsComma ? comma : comma + 1, {}});
        if (keeps)
            edits.push_back({begin, end, {}});
    } else {
        edits.push_back({begin, end, {}});
    }
}

// Nothing for an item that shares a line, or whose comma comes after a comment.
std::optional<TomlItems::Surroundings> TomlItems::surroundingsOf(std::size_t index) const
{
    const Item& item = items[index];
    const bool hasComma = item.comma != npos;
    if (!beginsLine(index) || (hasComma && skipTomlBlanks(text, item.end) != item.comma))
        return {};
    Surroundings found{0, hasComma ? item.comma + 1 : item.end, 0};
    found.end = lineTail(found.tail);
    if (text[found.end] != '\n' && text[found.end] != '\r')
        return {};
    const std::size_t before = index == 0 ? 1 : items[index - 1].comma + 1;
    const std::size_t lines = skipTomlLine(text, lineTail(before));
    const std::size_t line = text.find_last_not_of(" \t", item.begin - 1) + 1;
    found.above = lines + findTomlComments(text.substr(lines, line - lines));
    return found;
}

void TomlItems::move(std::size_t from, std::size_t to)
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

std::string TomlItems::apply() const
{
    std::vector<Edit> sorted = edits;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const Edit& a, const Edit& b) { return a.begin < b.begin; });
    std::string result;
    std::size_t at = 0;
    for (const Edit& edit : sorted) {
        (result += text.substr(at, edit.begin - at)) += edit.text;
        at = edit.end;
    }
    return result += text.substr(at);
}

} // namespace Repository::Documents
