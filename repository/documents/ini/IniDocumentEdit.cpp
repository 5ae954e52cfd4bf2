#include "repository/documents/common/KeyText.h"
#include "repository/documents/common/Refusal.h"
#include "repository/documents/common/TypeMark.h"
#include "repository/documents/ini/IniDocument.h"

#include <algorithm>

// What adds pieces to an ini file.

namespace Repository::Documents {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

// Behind the last blank line of a gap; what follows there is said of the section below.
std::size_t behindLastBlank(std::string_view gap)
{
    std::size_t behind = 0;
    for (std::size_t at = 0; at < gap.size();) {
        const TextLine line = textLineAt(gap, at);
        at = line.end;
        if (trimBlanks(line.content).empty())
            behind = at;
    }
    return behind;
}

} // namespace

bool IniDocument::endsBlank() const
{
    const IniPiece* const end = pieces.back();
    return !end || behindLastBlank(end->line.text) == end->line.text.size();
}

Outcome IniDocument::insert(std::string_view path, const Value& value)
{
    if (!splitPath(path))
        return refused(quoted(path) + " is not a path");
    const IniComments before = style.comments;
    Outcome outcome = value.type == Type::Group ? insertSection(path) : insertEntry(path, value);
    if (!outcome.ok())
        style.comments = before;
    return outcome;
}

Outcome IniDocument::insertSection(std::string_view path)
{
    const IniItem* const item = index.find(path);
    if (item && item->section)
        return refused("there is such a section already");
    std::string reason;
    const std::string header = headerText(path, reason);
    if (header.empty())
        return refused(std::move(reason));
    placeSection(path, header);
    return {};
}

Outcome IniDocument::insertEntry(std::string_view path, const Value& value)
{
    const PathEnds ends = splitLast(path);
    const IniSiblings siblings = siblingsOf(path);
    const IniItem* const item = index.find(path);
    if (item && item->entry)
        return refused("there is such an entry already");
    if (siblings.number != countOfEntries(index.find(siblings.first)) + 1)
        return refused("there is no " + quoted(joinNumber(siblings.first, siblings.number - 1)) +
                       " before it");
    const std::optional<std::string> key = decodeKey(splitNumber(ends.last).name);
    if (!key)
        return refused(quoted(ends.last) + " is not how a key stands in a path");

    IniItem* group = index.find(ends.parent);
    std::string reason;
    std::string header;
    if (!group || !group->section || (group->parent && !group->section->header)) {
        header = headerText(ends.parent, reason);
        if (header.empty())
            return refused(std::move(reason));
        group = nullptr;
    }
    IniPiece* const above = group ? group->section->last : nullptr;
    std::string text = entryText(*key, value, above && !isHeader(*above) ? above : nullptr, reason);
    const std::optional<IniLine> line = scanSingle(text, style.comments);
    if (!line)
        return refused(std::move(reason));
    std::string unheld = encoding.findRefusal(header + text);
    if (!unheld.empty())
        return refused(std::move(unheld));
    if (group && !above && !encoding.mayBegin(line->text))
        return refused("the file would begin like a file of another encoding");
    if (above && wouldSwallow(above->line, *line, {}))
        return refused("the entry would be read as part of the one above it");
    const IniPiece* const below = group ? chainedBehind(above) : nullptr;
    if (below && wouldSwallow(*line, below->line, above ? gapBelow(*above) : IniGap{true, false}))
        return refused("the line below it would be read as part of the value");

    if (!group)
        group = &placeSection(ends.parent, header);
    IniPiece* const last = group->section->last;
    IniPiece& piece = last ? placeEntry(*last, std::move(text)) : placeFirstAtRoot(std::move(text));
    piece.item = &index.nextEntry(*group, {splitNumber(ends.last).name});
    piece.item->entry = group->section->last = &piece;
    return {};
}

std::string IniDocument::headerText(std::string_view path, std::string& reason)
{
    const IniSiblings siblings = siblingsOf(path);
    const std::size_t count = countOfSections(index.find(siblings.first));
    if (siblings.number != count + 1) {
        reason = "there is no section " + quoted(joinNumber(siblings.first, count + 1)) + " before it";
        return {};
    }
    std::string text = '[' + siblings.first + ']' + style.lineEnd;
    const std::optional<IniLine> line = scanSingle(text, style.comments);
    if (!line || line->kind != IniLine::Kind::Header || line->key() != siblings.first || isIniTooDeep(path) ||
        encodePath(line->key()) != siblings.first) {
        reason = "an ini file cannot hold a section of the path " + quoted(siblings.first);
        return {};
    }
    const IniComments comments = firstHeader ? style.comments : iniCommentsOf(siblings.first);
    if (!allowsComments(comments)) {
        reason = "below it, values of this file would be read with the comments behind them";
        return {};
    }
    style.comments = comments;
    return text;
}

std::string IniDocument::entryText(std::string_view key, const Value& value, const IniPiece* sibling,
                                   std::string& reason) const
{
    const bool follow = sibling && sibling->line.separated && !sibling->line.value().empty();
    const std::string indent(sibling ? sibling->line.blanksBefore() : style.indent);
    std::string draft = indent;
    draft += key;
    draft += follow ? alignedSeparator(sibling->line.separator(), sibling->line.key().size(), key.size())
                    : style.separator;
    const bool empty = value.type == Type::String && std::get<std::string>(value.data).empty();
    while (empty && isBlank(draft.back()))
        draft.pop_back();
    draft += style.lineEnd;
    const std::optional<IniLine> line = scanSingle(draft, style.comments);
    if (!line || line->kind != IniLine::Kind::Entry || !line->separated || line->keyBegin != indent.size() ||
        line->key() != key || line->valueEnd < line->valueBegin || key.find('\0') != std::string_view::npos) {
        reason = "an ini file cannot hold the key " + quoted(key);
        return {};
    }
    // Bytes without a mark would make a file that is no text.
    std::optional<std::string> text;
    if (value.type != Type::ByteArray)
        text = writeIniValue(*line, value, style);
    if (!text) {
        // Unit and desktop files know "#" only.
        const char usual = style.comments == IniComments::OwnLines ? '#' : ';';
        const char comment = style.comment == '\0' ? usual : style.comment;
        const std::string marked = indent + writeTypeMark(comment, value.type) + style.lineEnd + draft;
        const std::optional<IniLine> markedLine = scanSingle(marked, style.comments);
        text = markedLine ? writeIniValue(*markedLine, value, style) : std::nullopt;
    }
    if (!text)
        reason = explainIniRefusal(value, style);
    return std::move(text).value_or(std::string());
}

IniItem& IniDocument::placeSection(std::string_view path, const std::string& header)
{
    const std::string blank = endsBlank() ? std::string() : style.lineEnd;
    IniPiece& piece = addOwn(nullptr, chainEnd, header);
    // The blank line goes when the section goes, so it is part of the piece.
    piece.own->text = blank + header;
    piece.line.text = piece.own->text;
    const auto shift = static_cast<std::uint32_t>(blank.size());
    for (std::uint32_t* offset :
         {&piece.line.keyBegin, &piece.line.keyEnd, &piece.line.valueBegin, &piece.line.valueEnd})
        *offset += shift;
    IniItem& item = index.nextSection({siblingsOf(path).first});
    piece.item = &item;
    item.section->header = item.section->last = &piece;
    firstHeader = firstHeader ? firstHeader : &piece;
    return item;
}

IniPiece& IniDocument::placeEntry(IniPiece& above, std::string text)
{
    return addOwn(above.next, &above, std::move(text));
}

IniPiece& IniDocument::placeFirstAtRoot(std::string text)
{
    if (!chainFront) {
        // What stands in the last line of comments is not said of the new entry.
        if (!pieces.isEmpty() && endsInTypeMark(pieces.back()->line.text))
            addOwn(nullptr, nullptr, style.lineEnd);
        return addOwn(nullptr, nullptr, std::move(text));
    }
    // Behind what is said of the whole file, and set off from what is said of the first section.
    IniPiece* before = pieces.front();
    if (before != chainFront) {
        const IniPiece& gap = *before;
        const std::size_t cut = behindLastBlank(gap.line.text);
        IniLine lower;
        lower.text = gap.line.text.substr(cut);
        if (cut > 0 && cut < gap.line.text.size()) {
            IniPiece& rest = add(before->next, nullptr, lower);
            if (gap.own) {
                rest.own = std::make_unique<IniOwnText>(IniOwnText{std::string(lower.text), {}});
                rest.line.text = rest.own->text;
            }
            before->line.text = before->line.text.substr(0, cut);
        }
        if (cut > 0)
            before = before->next;
    }
    IniPiece& blank = addOwn(before, nullptr, style.lineEnd);
    return addOwn(&blank, nullptr, std::move(text));
}

} // namespace Repository::Documents
