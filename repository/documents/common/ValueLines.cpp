#include "repository/documents/common/ValueLines.h"

#include "repository/documents/common/TextLine.h"
#include "repository/documents/common/TypeTag.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace Repository::Documents {

namespace {

// A line of a value, with its line end, and the comments above it.
struct ValueLine
{
    std::string_view text;
    std::string comments;
};

std::vector<ValueLine> linesOf(std::string_view text, const LineDialect& dialect)
{
    std::vector<ValueLine> lines;
    std::string comments;
    for (std::size_t at = 0; at < text.size();) {
        const TextLine line = textLineAt(text, at);
        const std::string_view whole = text.substr(at, line.end - at);
        if (lines.empty() || !dialect.isComment(line.content))
            lines.push_back({whole, std::exchange(comments, {})});
        else
            comments += whole;
        at = line.end;
    }
    return lines;
}

bool isAlike(const ValueLine& a, const ValueLine& b)
{
    return trimBlanks(textLineAt(a.text, 0).content) == trimBlanks(textLineAt(b.text, 0).content);
}

// Without the line end of the last one.
std::string joined(const std::vector<ValueLine>& lines, const std::string& lineEnd)
{
    std::string text;
    for (const ValueLine& line : lines) {
        text += endsLine(text) ? "" : lineEnd;
        (text += line.comments) += &line == &lines.back() ? textLineAt(line.text, 0).content : line.text;
    }
    return text;
}

constexpr std::size_t none = std::string_view::npos;

// For each former line the one that is alike: at both ends, and else the next that there is. The first line
// has the key and is only itself.
std::vector<std::size_t> matched(const std::vector<ValueLine>& before, const std::vector<ValueLine>& after)
{
    std::vector<std::size_t> places(before.size(), none);
    std::size_t first = 0;
    for (; first < std::min(before.size(), after.size()) && isAlike(before[first], after[first]); ++first)
        places[first] = first;
    first = std::max<std::size_t>(first, 1);
    std::size_t last = before.size();
    std::size_t end = after.size();
    for (; last > first && end > first && isAlike(before[last - 1], after[end - 1]); --last)
        places[last - 1] = --end;
    constexpr std::size_t most = 1000; // beyond which a value is rather another one
    for (std::size_t line = first, from = first; line < last && last - first < most; ++line) {
        std::size_t place = from;
        while (place < end && !isAlike(before[line], after[place]))
            ++place;
        if (place == end)
            continue;
        places[line] = place;
        from = place + 1;
    }
    return places;
}

// Gives the comments for which there is no line.
std::string merge(const std::vector<ValueLine>& before, std::vector<ValueLine>& after)
{
    const std::vector<std::size_t> places = matched(before, after);
    std::string comments;
    std::size_t free = 0; // the next one without a former line
    std::size_t kept = 0; // the next former line that has one
    for (std::size_t line = 0; line < before.size(); ++line) {
        comments += before[line].comments;
        while (kept < before.size() && (kept < line || places[kept] == none))
            ++kept;
        if (kept == line) {
            free = places[line];
            after[free].text = before[line].text;
        }
        if (free < (kept < before.size() && kept != line ? places[kept] : after.size()))
            after[free++].comments = std::exchange(comments, {});
    }
    return comments;
}

std::vector<ValueLine> valueLines(const Statement& entry, const LineDialect& dialect)
{
    return linesOf(entry.text.substr(entry.begin, entry.valueEnd - entry.begin), dialect);
}

// Of the lines above that of an entry, those that are no type tags come first.
std::string_view commentsAbove(const Statement& entry)
{
    std::size_t end = 0;
    for (std::size_t at = 0; at < entry.begin;) {
        const TextLine line = textLineAt(entry.text, at);
        at = line.end;
        end = readTypeTag(line.content) ? end : at;
    }
    return entry.text.substr(0, end);
}

// Between the lines of a value; what looks like a comment may be part of a text.
std::string commentsBetween(const std::vector<ValueLine>& lines, const Statement& entry,
                            const LineDialect& dialect)
{
    std::string comments;
    std::string bare(entry.tags());
    for (const ValueLine& line : lines) {
        comments += line.comments;
        bare += line.text;
    }
    bare += entry.trailing();
    const auto value = comments.empty() ? std::nullopt : dialect.scanEntry(bare);
    return value && isSame(dialect.read(*value), dialect.read(entry)) ? comments : std::string();
}

std::optional<std::string> withCommentsAbove(const std::string& comments, const std::string& text,
                                             const Statement& before, const LineDialect& dialect)
{
    const std::string lineEnd = lineEndOf(before.text);
    std::string whole;
    for (std::size_t at = 0; at < comments.size();) {
        const TextLine line = textLineAt(comments, at);
        if (readTypeTag(line.content))
            return {};
        ((whole += before.indent()) += trimBlanks(line.content)) += lineEnd;
        at = line.end;
    }
    whole += text;
    const auto now = dialect.scanEntry(whole);
    const auto alone = dialect.scanEntry(text);
    const bool isAlike = now && alone && now->key() == alone->key() && now->tag == alone->tag;
    return isAlike && isSame(dialect.read(*now), dialect.read(*alone)) ? std::optional(whole) : std::nullopt;
}

} // namespace

std::string ownComments(const Statement& entry, const LineDialect& dialect)
{
    return std::string(commentsAbove(entry)) + commentsBetween(valueLines(entry, dialect), entry, dialect);
}

Statement withoutCommentsAbove(Statement entry)
{
    const auto size = std::uint32_t(commentsAbove(entry).size());
    for (std::uint32_t* const offset :
         {&entry.begin, &entry.keyBegin, &entry.keyEnd, &entry.valueBegin, &entry.valueEnd})
        *offset -= size;
    entry.text.remove_prefix(size);
    return entry;
}

std::optional<std::string> withFormerLines(const LineDialect& dialect, const Statement& before,
                                           const std::string& text)
{
    std::string comments(commentsAbove(before));
    const std::vector<ValueLine> lines = valueLines(before, dialect);
    const auto after = dialect.scanEntry(text);
    if (!after || (lines.size() < 2 && comments.empty()))
        return text;
    const std::string between = commentsBetween(lines, before, dialect);
    std::vector<ValueLine> merged = valueLines(*after, dialect);
    const std::string left = merge(lines, merged);
    std::string whole(after->tags());
    (whole += joined(merged, lineEndOf(before.text))) += after->trailing();
    const auto now = dialect.scanEntry(whole);
    const bool isAlike = now && isSame(dialect.read(*now), dialect.read(*after));
    comments += between.empty() ? between : isAlike ? left : between;
    return withCommentsAbove(comments, isAlike ? whole : text, before, dialect);
}

std::optional<std::string> withFormerComments(const LineDialect& dialect, const Statement& before,
                                              const std::string& text)
{
    const std::string former = ownComments(before, dialect);
    const auto after = former.empty() ? std::nullopt : dialect.scanEntry(text);
    if (!after)
        return text;
    std::string comments;
    const std::string present = commentsBetween(valueLines(*after, dialect), *after, dialect);
    for (std::size_t at = 0; at < former.size();) {
        const TextLine line = textLineAt(former, at);
        if (present.find(trimBlanks(line.content)) == std::string::npos)
            (comments += line.content) += '\n';
        at = line.end;
    }
    return withCommentsAbove(comments, text, before, dialect);
}

} // namespace Repository::Documents
