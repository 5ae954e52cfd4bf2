#include "repository/documents/common/CarriedComments.h"

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/Latin1.h"
#include "repository/documents/common/SpanDecoder.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/common/TypeTag.h"
#include "repository/documents/common/WrittenEntries.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <utility>

namespace Repository::Documents {

namespace {

bool isAtOrBelow(std::string_view path, std::string_view top)
{
    return startsWith(path, top) && (path.size() == top.size() || path[top.size()] == '.');
}

// Of something in a group.
std::string pathAfter(std::string_view path, std::string_view group)
{
    return std::string(path.substr(std::min(path.size(), group.empty() ? 0 : group.size() + 1)));
}

std::size_t lineBegin(std::string_view text, std::size_t at)
{
    const std::size_t end = text.substr(0, at).find_last_of("\r\n");
    return end == std::string_view::npos ? 0 : end + 1;
}

// The signs that begin and end a comment in any format.
std::string_view withoutSigns(std::string_view comment, bool& isBlock)
{
    struct Signs
    {
        std::string_view opening;
        std::string_view closing;
    };
    static constexpr Signs all[] = {{"<!--", "-->"}, {"/*", "*/"}, {"//", {}},
                                    {"#", {}},       {";", {}},    {"!", {}}};
    for (const Signs& signs : all) {
        if (!startsWith(comment, signs.opening))
            continue;
        comment.remove_prefix(signs.opening.size());
        isBlock = !signs.closing.empty();
        if (isBlock && comment.size() >= signs.closing.size())
            comment.remove_suffix(signs.closing.size());
        break;
    }
    return comment;
}

// The lines of one comment. In a block, they are set off by a blank, as they are by a star that goes.
std::vector<std::string> linesOf(const std::string& comment)
{
    bool isBlock = false;
    const std::string_view content = withoutSigns(comment, isBlock);
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < content.size();) {
        const TextLine line = textLineAt(content, at);
        std::string_view text = line.content;
        while (!text.empty() && isBlank(text.back()))
            text.remove_suffix(1);
        if (isBlock && at > 0) {
            text = trimBlanks(text);
            if (startsWith(text, "*"))
                text.remove_prefix(1);
        }
        if (!text.empty() || !isBlock)
            lines.push_back((isBlock && at > 0 && !isBlank(text.front()) ? " " : "") + std::string(text));
        at = line.end;
    }
    if (lines.empty())
        lines.emplace_back();
    return lines;
}

bool isOfVantry(std::string_view comment)
{
    const std::string_view content = trimBlanks(comment.substr(std::min<std::size_t>(1, comment.size())));
    return readTypeTag(comment) || startsWith(content, "@names ");
}

// Without a character that cannot stand in a comment of every format.
bool isPlain(const CarriedComment& comment)
{
    return std::all_of(comment.lines.begin(), comment.lines.end(), [](const std::string& line) {
        return std::all_of(line.begin(), line.end(), [](char c) { return c == '\t' || (c & '\xe0') != 0; });
    });
}

std::string utf8(const std::string& text)
{
    return isUtf8(text) ? text : fromLatin1(text).value_or(std::string());
}

// Where the comments of a file's text go, line by line.
class CommentWriter
{
public:
    CommentWriter(const Document& document, std::string_view bytes)
        : marks(document.getMarks()), encoding(document.getEncoding()), lineEnd(lineEndOf(marks.text))
    {
        for (const TextMarks::Begin& begin : marks.begins) {
            first = std::min(first, begin.offset);
            const std::string_view path = begin.path; // and the groups that it alone makes
            for (std::size_t end = path.size(); end != std::string_view::npos && end > 0;
                 end = path.rfind('.', end - 1)) {
                if (!begins.try_emplace(std::string(path.substr(0, end)), begin.offset).second)
                    break;
            }
        }
        SpanDecoder decoder(encoding, bytes);
        document.visitSpans([&](const std::string& path, Span inFile) {
            const Span span = decoder.decode(inFile);
            values.emplace(path, span);
            for (std::size_t end = path.rfind('.'); end != std::string::npos && end > 0;
                 end = path.rfind('.', end - 1)) {
                std::string& last = lastValues[path.substr(0, end)];
                if (last.empty() || values[last].offset < span.offset)
                    last = path;
            }
        });
    }

    bool add(const CarriedComment& comment)
    {
        const bool hasClosing =
            !marks.closing.empty() &&
            std::any_of(comment.lines.begin(), comment.lines.end(), [](const std::string& line) {
                return line.find("--") != std::string::npos || (!line.empty() && line.back() == '-');
            });
        const bool isRefused =
            std::any_of(comment.lines.begin(), comment.lines.end(),
                        [this](const std::string& line) { return !encoding.findRefusal(line).empty(); });
        if (marks.opening.empty() || hasClosing || isRefused || comment.isInstruction || !isPlain(comment))
            return false;
        if (comment.isAtEnd && comment.path.empty() && comment.last.empty())
            return addAtEndOfFile(comment);
        if (comment.isAtEnd)
            return addAtEnd(comment);
        if (comment.path.empty())
            return addAbove(comment, first);
        // An entry that shares its line with what is around it.
        std::string_view path = comment.path;
        auto begin = begins.find(comment.path);
        while (begin == begins.end() && path.rfind('.') != std::string_view::npos) {
            path = path.substr(0, path.rfind('.'));
            begin = begins.find(std::string(path));
        }
        if (begin == begins.end())
            return false;
        return (comment.isBehind && addBehind(comment)) || addAbove(comment, begin->second);
    }

    std::string getBytes() const
    {
        std::string text;
        std::size_t at = 0;
        for (const auto& [offset, piece] : pieces) {
            (text += marks.text.substr(at, offset - at)) += piece;
            at = offset;
        }
        return encoding.encode(text += marks.text.substr(at));
    }

private:
    std::string written(const std::string& line) const { return marks.opening + line + marks.closing; }

    bool addAbove(const CarriedComment& comment, std::size_t at)
    {
        const std::size_t own = lineBegin(marks.text, at);
        const std::string_view rest = marks.text.substr(own);
        const std::string_view indent = rest.substr(0, indentOf(rest));
        std::size_t line = own;
        while (line > 0 && isTag(lineBegin(marks.text, line - 1)))
            line = lineBegin(marks.text, line - 1);
        std::string& piece = pieces[line];
        if (line == marks.text.size() && !endsLine(marks.text) && piece.empty())
            piece += lineEnd;
        for (const std::string& each : comment.lines)
            ((piece += indent) += written(each)) += lineEnd;
        if (comment.isApart)
            piece += lineEnd;
        return true;
    }

    bool addAtEndOfFile(const CarriedComment& comment)
    {
        std::string& piece = pieces[marks.text.size()];
        if (marks.endsInSection && !std::exchange(isEndSetOff, true))
            piece += (piece.empty() && !endsLine(marks.text) ? lineEnd : std::string()) + lineEnd;
        return addAbove(comment, marks.text.size());
    }

    // Below the entry that it followed, or all in the group, or the line that begins that.
    bool addAtEnd(const CarriedComment& comment)
    {
        const std::string followed =
            comment.last.empty() ? comment.path : joinPath(comment.path, comment.last);
        std::string entry = lastValueIn(followed);
        if (entry.empty())
            entry = lastValueIn(comment.path);
        const auto value = values.find(entry);
        const auto begin = begins.find(entry.empty() ? followed : entry);
        if (value == values.end() && begin == begins.end())
            return false;
        const std::size_t from = begin == begins.end() ? value->second.offset : begin->second;
        const std::size_t end = value == values.end() ? from : value->second.offset + value->second.length;
        const std::size_t below = textLineAt(marks.text, end).end;
        std::string& piece = pieces[below];
        if (below == marks.text.size() && !endsLine(marks.text) && piece.empty())
            piece += lineEnd;
        for (const std::string& each : comment.lines)
            ((piece += indentationOf(from)) += written(each)) += lineEnd;
        return true;
    }

    // The last value at or in an entry; empty where it has none.
    std::string lastValueIn(const std::string& path) const
    {
        const auto last = lastValues.find(path);
        const std::string& value = last == lastValues.end() ? path : last->second;
        return values.count(value) > 0 ? value : std::string();
    }

    // Blanks up to there; what indents the line where anything but the "-" of elements comes first.
    std::string indentationOf(std::size_t at) const
    {
        const std::size_t line = lineBegin(marks.text, at);
        const std::string_view before = marks.text.substr(line, at - line);
        return before.find_first_not_of(" -") == std::string_view::npos
                   ? std::string(before.size(), ' ')
                   : std::string(before.substr(0, indentOf(before)));
    }

    // What tags the type of the next line.
    bool isTag(std::size_t line) const
    {
        const std::string_view content = trimBlanks(textLineAt(marks.text, line).content);
        return readTypeTag(content) || startsWith(content, "<?vantry type=");
    }

    bool addBehind(const CarriedComment& comment)
    {
        const auto value = values.find(comment.path);
        if (value == values.end() || comment.lines.size() != 1 || !marks.mayFollowValue)
            return false;
        const std::size_t end = value->second.offset + value->second.length;
        const std::size_t lineStop = std::min(marks.text.find_first_of("\r\n", end), marks.text.size());
        if (lineBegin(marks.text, end) > value->second.offset ||
            !isBlankLine(marks.text.substr(end, lineStop - end)))
            return false;
        return pieces.try_emplace(lineStop, ' ' + written(comment.lines.front())).second;
    }

    const TextMarks marks;
    const TextEncoding encoding;
    const std::string lineEnd;
    std::size_t first = marks.begins.empty() ? 0 : marks.begins.front().offset; // entry in the text
    std::unordered_map<std::string, std::size_t> begins;
    std::unordered_map<std::string, Span> values;
    std::unordered_map<std::string, std::string> lastValues; // by the paths of groups
    bool isEndSetOff = false;
    std::map<std::size_t, std::string> pieces; // by where they are put in
};

std::vector<Entry> entriesOf(const Document& document)
{
    std::vector<Entry> entries;
    document.visit([&](const Entry& entry) { entries.push_back(entry); });
    return entries;
}

// Adds comments as long as the text is still read alike.
class CommentAddition
{
public:
    CommentAddition(std::string& changed, const DocumentMaker& documentMaker)
        : text(changed), makeDocument(documentMaker), readings(fewReadings + manyBytes / (changed.size() + 1))
    {
    }

    // How many of them have no place.
    std::size_t add(std::vector<CarriedComment> comments)
    {
        std::size_t refused = 0;
        if (comments.empty() || tryAll(comments, refused))
            return refused;
        if (readings == 0)
            return comments.size();
        if (comments.size() == 1 && !std::exchange(comments.front().isBehind, false))
            return 1;
        if (comments.size() == 1)
            return add(std::move(comments)); // above it, then
        const auto middle = comments.begin() + std::ptrdiff_t(comments.size() / 2);
        refused = add({comments.begin(), middle});
        return refused + add({middle, comments.end()});
    }

private:
    // So many are made at most, which take a few seconds.
    static constexpr std::size_t fewReadings = 50;
    static constexpr std::size_t manyBytes = 100'000'000;

    bool tryAll(const std::vector<CarriedComment>& comments, std::size_t& refused)
    {
        readings -= readings > 0 ? 1 : 0;
        refused = 0;
        const auto before = makeDocument();
        const auto after = makeDocument();
        before->parseAgain(text);
        CommentWriter writer(*before, text);
        for (const CarriedComment& comment : comments)
            refused += writer.add(comment) ? 0 : 1;
        std::string changed = writer.getBytes();
        if (!after->parse(changed).ok() || !holdsEntries(*after, {}, entriesOf(*before)))
            return false;
        text = std::move(changed);
        return true;
    }

    std::string& text;
    const DocumentMaker& makeDocument;
    std::size_t readings; // that may still be made
};

} // namespace

std::vector<CarriedComment> commentsOf(const TextMarks& marks)
{
    std::vector<TextMarks::Begin> begins = marks.begins;
    std::stable_sort(begins.begin(), begins.end(),
                     [](const auto& a, const auto& b) { return a.offset < b.offset; });
    std::vector<CarriedComment> found;
    std::size_t former = 0; // where the last own lines end
    auto opened = begins.cbegin();
    std::vector<decltype(opened)> around; // entries that something closes, and that the comment lies in
    for (const TextMarks::Comment& comment : marks.comments) {
        const std::size_t line = lineBegin(marks.text, comment.offset);
        if (isOfVantry(comment.text))
            continue;
        CarriedComment carried;
        carried.lines = linesOf(utf8(comment.text));
        carried.isBehind = !isBlankLine(marks.text.substr(line, comment.offset - line));
        auto next = std::lower_bound(begins.cbegin(), begins.cend(), comment.offset,
                                     [](const auto& begin, std::size_t at) { return begin.offset < at; });
        const std::size_t end = std::min(comment.offset + comment.text.size(), marks.text.size());
        for (; opened != next; ++opened) {
            if (opened->end > 0)
                around.push_back(opened);
        }
        const auto isClosed = [&](const auto& begin) { return begin->end <= comment.offset; };
        around.erase(std::remove_if(around.begin(), around.end(), isClosed), around.end());
        const bool isLast = !around.empty() && (next == begins.end() || next->offset >= around.back()->end);
        const bool isInFront =
            !isLast && next != begins.end() && isBlankLine(marks.text.substr(end, next->offset - end));
        carried.isInstruction = startsWith(comment.text, "<?");
        carried.isBehind = carried.isBehind && !isInFront && next != begins.cbegin();
        if (carried.isBehind)
            --next;
        carried.isAtEnd = !carried.isBehind && (isLast || next == begins.end());
        if (carried.isAtEnd && isLast) {
            carried.path = around.back()->path;
            const std::string& last = std::prev(next)->path;
            carried.last = isAtOrBelow(last, carried.path) ? pathAfter(last, carried.path) : std::string();
        } else if (!carried.isAtEnd) {
            carried.path = next->path;
        }
        const std::string_view below =
            marks.text.substr(std::min(textLineAt(marks.text, end).end, marks.text.size()));
        carried.isApart =
            !carried.isBehind && !isInFront && !below.empty() && isBlankLine(textLineAt(below, 0).content);
        const bool goesOn = !found.empty() && !carried.isInstruction && !found.back().isInstruction &&
                            !carried.isBehind && !found.back().isBehind && !found.back().isApart &&
                            former == line && found.back().path == carried.path &&
                            found.back().isAtEnd == carried.isAtEnd;
        if (goesOn) {
            found.back().lines.insert(found.back().lines.end(), carried.lines.begin(), carried.lines.end());
            found.back().isApart = carried.isApart;
        } else {
            found.push_back(std::move(carried));
        }
        former = textLineAt(marks.text, end).end;
    }
    // What stands at the head of a file apart from its first entry is about all of it.
    for (CarriedComment& comment : found) {
        if (begins.empty() || !comment.isApart || comment.isAtEnd || comment.path != begins.front().path)
            break;
        comment.path.clear();
    }
    return found;
}

std::vector<CarriedComment> commentsBelow(std::string_view path, std::vector<CarriedComment> comments)
{
    if (path.empty())
        return comments;
    std::vector<CarriedComment> found;
    for (CarriedComment& comment : comments) {
        if (!isAtOrBelow(comment.path, path))
            continue;
        comment.path = pathAfter(comment.path, path);
        found.push_back(std::move(comment));
    }
    return found;
}

std::size_t addComments(std::string& text, const DocumentMaker& makeDocument,
                        const std::vector<CarriedComment>& comments)
{
    return CommentAddition(text, makeDocument).add(comments);
}

std::size_t countMissing(const std::vector<CarriedComment>& comments,
                         const std::vector<CarriedComment>& before, const std::vector<CarriedComment>& now)
{
    std::unordered_map<std::string, int> lines;
    const auto count = [&lines](const std::vector<CarriedComment>& list, int by) {
        for (const CarriedComment& comment : list) {
            for (const std::string& line : comment.lines)
                lines[std::string(trimBlanks(line))] += by;
        }
    };
    count(now, 1);
    count(before, -1);
    return std::size_t(
        std::count_if(comments.begin(), comments.end(), [&lines](const CarriedComment& comment) {
            bool isThere = true;
            for (const std::string& line : comment.lines)
                isThere = --lines[std::string(trimBlanks(line))] >= 0 && isThere;
            return !isThere;
        }));
}

} // namespace Repository::Documents
