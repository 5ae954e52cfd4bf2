#include "repository/documents/IniDocument.h"
#include "repository/documents/KeyText.h"
#include "repository/documents/Refusal.h"
#include "repository/documents/TypeMark.h"

#include <algorithm>

// The operations that add pieces to an ini file and take them out.

namespace Repository::Documents {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

std::size_t countOfEntries(const IniItem* first)
{
    return first ? first->entries : 0;
}

std::size_t countOfSections(const IniItem* first)
{
    return first && first->section ? first->section->headers : 0;
}

struct Siblings
{
    std::string first; // path of the first sibling of the name
    std::size_t number = 1;
};

Siblings siblingsOf(std::string_view path)
{
    const PathEnds ends = splitLast(path);
    const NumberedComponent last = splitNumber(ends.last);
    return {joinPath(ends.parent, last.name), last.number};
}

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

bool isHeader(const IniPiece& piece)
{
    return piece.line.kind == IniLine::Kind::Header;
}

const IniItem* sectionOf(const IniPiece& piece)
{
    return isHeader(piece) ? piece.item : piece.item->parent;
}

// The section and all below it.
std::vector<IniItem*> sectionsFrom(IniItem& top)
{
    std::vector<IniItem*> all{&top};
    for (std::size_t at = 0; at < all.size(); ++at)
        all.insert(all.end(), all[at]->section->deeper.begin(), all[at]->section->deeper.end());
    return all;
}

} // namespace

bool IniDocument::endsBlank() const
{
    return pieces.empty() || behindLastBlank(pieces.back().line.text) == pieces.back().line.text.size();
}

Outcome IniDocument::insert(std::string_view path, const Value& value)
{
    if (!splitPath(path))
        return refused(quoted(path) + " is not a path");
    return value.type == Type::Group ? insertSection(path) : insertEntry(path, value);
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
    const Siblings siblings = siblingsOf(path);
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
    const std::optional<IniLine> line = scanSingle(text);
    if (!line)
        return refused(std::move(reason));
    std::string unheld = encoding.findRefusal(header + text);
    if (!unheld.empty())
        return refused(std::move(unheld));
    if (group && !above && !encoding.mayBegin(line->text))
        return refused("the file would begin like a file of another encoding");
    if (above && wouldSwallow(above->line, *line, false))
        return refused("the entry would be read as part of the one above it");
    const IniPiece* const below = group ? chainedBehind(above) : nullptr;
    if (below && wouldSwallow(*line, below->line, !above || gapBelow(*above)))
        return refused("the line below it would be read as part of the value");

    if (!group)
        group = &placeSection(ends.parent, header);
    IniPiece* const last = group->section->last;
    IniPiece& piece = last ? placeEntry(*last, std::move(text)) : placeFirstAtRoot(std::move(text));
    piece.item = &index.nextEntry(*group, splitNumber(ends.last).name);
    piece.item->entry = group->section->last = &piece;
    return {};
}

std::string IniDocument::headerText(std::string_view path, std::string& reason) const
{
    const Siblings siblings = siblingsOf(path);
    const std::size_t count = countOfSections(index.find(siblings.first));
    if (siblings.number != count + 1) {
        reason = "there is no section " + quoted(joinNumber(siblings.first, count + 1)) + " before it";
        return {};
    }
    std::string text = '[' + siblings.first + ']' + style.lineEnd;
    const std::optional<IniLine> line = scanSingle(text);
    if (line && line->kind == IniLine::Kind::Header && line->key() == siblings.first && !isIniTooDeep(path) &&
        encodePath(line->key()) == siblings.first)
        return text;
    reason = "an ini file cannot hold a section of the path " + quoted(siblings.first);
    return {};
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
    const std::optional<IniLine> line = scanSingle(draft);
    if (!line || line->kind != IniLine::Kind::Entry || !line->separated || line->keyBegin != indent.size() ||
        line->key() != key || line->valueEnd < line->valueBegin) {
        reason = "an ini file cannot hold the key " + quoted(key);
        return {};
    }
    // Bytes without a mark would make a file that is no text.
    std::optional<std::string> text;
    if (value.type != Type::ByteArray)
        text = writeIniValue(*line, value, style);
    if (!text) {
        const char comment = style.comment == '\0' ? ';' : style.comment;
        const std::string marked = indent + writeTypeMark(comment, value.type) + style.lineEnd + draft;
        const std::optional<IniLine> markedLine = scanSingle(marked);
        text = markedLine ? writeIniValue(*markedLine, value, style) : std::nullopt;
    }
    if (!text)
        reason = explainIniRefusal(value);
    return std::move(text).value_or(std::string());
}

IniItem& IniDocument::placeSection(std::string_view path, const std::string& header)
{
    const std::string blank = endsBlank() ? std::string() : style.lineEnd;
    IniPiece& piece = addOwn(pieces.end(), chainEnd, header);
    // The blank line goes when the section goes, so it is part of the piece.
    *piece.own = blank + header;
    piece.line.text = *piece.own;
    const auto shift = static_cast<std::uint32_t>(blank.size());
    for (std::uint32_t* offset :
         {&piece.line.keyBegin, &piece.line.keyEnd, &piece.line.valueBegin, &piece.line.valueEnd})
        *offset += shift;
    IniItem& item = index.nextSection(siblingsOf(path).first);
    piece.item = &item;
    item.section->header = item.section->last = &piece;
    return item;
}

IniPiece& IniDocument::placeEntry(IniPiece& above, std::string text)
{
    return addOwn(std::next(above.place), &above, std::move(text));
}

IniPiece& IniDocument::placeFirstAtRoot(std::string text)
{
    if (!chainFront)
        return addOwn(pieces.end(), nullptr, std::move(text));
    // Behind what is said of the whole file, and set off from what is said of the first section.
    Pieces::iterator before = pieces.begin();
    if (before != chainFront->place) {
        const IniPiece& gap = *before;
        const std::size_t cut = behindLastBlank(gap.line.text);
        IniLine lower;
        lower.text = gap.line.text.substr(cut);
        if (cut > 0 && cut < gap.line.text.size()) {
            IniPiece& rest = add(std::next(before), nullptr, lower);
            if (gap.own)
                rest.own = std::make_unique<std::string>(lower.text);
            rest.line.text = rest.own ? std::string_view(*rest.own) : lower.text;
            before->line.text = before->line.text.substr(0, cut);
        }
        if (cut > 0)
            ++before;
    }
    addOwn(before, nullptr, style.lineEnd);
    return addOwn(std::prev(before), nullptr, std::move(text));
}

bool IniDocument::removalMovesSiblings(std::string_view path) const
{
    const IniItem* const item = index.find(path);
    if (!item || path.empty())
        return false;
    const Siblings siblings = siblingsOf(path);
    const IniItem* const first = index.find(siblings.first);
    return (item->entry && siblings.number < countOfEntries(first)) ||
           (item->section && item->section->header && siblings.number < countOfSections(first));
}

Outcome IniDocument::remove(std::string_view path)
{
    IniItem* const item = index.find(path);
    if (!item || path.empty())
        return refused(item ? "the root of a file is not removed" : "there is no such entry");
    const std::vector<IniItem*> going = item->section ? sectionsFrom(*item) : std::vector<IniItem*>();
    if ((item->entry && !entryCanGo(*item->entry)) || !sectionsCanGo(going))
        return refused("without it the line below would be read as part of the value above");
    if (!frontCanGo(*item, going))
        return refused("without it the file would begin like a file of another encoding");
    const Siblings siblings = siblingsOf(path);
    const bool moves = item->section && item->section->header &&
                       siblings.number < countOfSections(index.find(siblings.first));
    if (item->section && item->section->header)
        --index.find(siblings.first)->section->headers;
    if (item->entry)
        takeEntry(*item);
    takeSections(going);
    // Other sections get new paths, with all that they hold.
    return moves ? parse(getBytes()) : Outcome();
}

bool IniDocument::frontCanGo(const IniItem& item, const std::vector<IniItem*>& going) const
{
    const auto goes = [&](const IniPiece& piece) {
        return item.entry == &piece ||
               (piece.item && std::find(going.begin(), going.end(), sectionOf(piece)) != going.end());
    };
    Pieces::const_iterator front = pieces.begin();
    while (front != pieces.end() && goes(*front))
        front = std::next(isHeader(*front) ? front->item->section->last->place : front->place);
    return front == pieces.end() || encoding.mayBegin(front->line.text);
}

bool IniDocument::entryCanGo(const IniPiece& entry) const
{
    return !entry.above || !entry.below ||
           !wouldSwallow(entry.above->line, entry.below->line, gapBelow(*entry.above) || gapBelow(entry));
}

void IniDocument::takeEntry(IniItem& item)
{
    IniPiece& piece = *item.entry;
    IniSection& section = *item.parent->section;
    // Above it stands another entry of the section or its header, or nothing at the root.
    if (section.last == &piece)
        section.last = piece.above;
    const Siblings siblings = siblingsOf(*item.path);
    const PathEnds ends = splitLast(siblings.first);
    IniItem& first = *index.find(siblings.first);
    IniItem* emptied = &item;
    for (std::size_t number = siblings.number + 1; number <= first.entries; ++number) {
        IniItem* const next = index.find(joinPath(ends.parent, joinNumber(ends.last, number)));
        emptied->entry = next->entry;
        emptied->entry->item = emptied;
        emptied = next;
    }
    --first.entries;
    take(piece);
    index.dropEntry(*emptied);
}

bool IniDocument::sectionsCanGo(const std::vector<IniItem*>& going) const
{
    const auto goes = [&going](const IniPiece* piece) {
        return std::find(going.begin(), going.end(), sectionOf(*piece)) != going.end();
    };
    for (const IniItem* item : going) {
        const IniPiece* const header = item->section->header;
        const IniPiece* const below = header ? item->section->last->below : nullptr;
        // Only an indented header can be taken for the end of the value above.
        if (!below || below->line.indent == 0 || goes(below))
            continue;
        const IniPiece* above = header->above;
        while (above && goes(above))
            above = above->above;
        if (above && wouldSwallow(above->line, below->line, true))
            return false;
    }
    return true;
}

void IniDocument::takeSections(const std::vector<IniItem*>& going)
{
    std::vector<std::string> paths;
    for (IniItem* const item : going) {
        paths.push_back(*item->path);
        IniSection& section = *item->section;
        if (!section.header)
            continue;
        const Pieces::iterator end = std::next(section.last->place);
        for (Pieces::iterator at = section.header->place; at != end;) {
            IniPiece& piece = *at++;
            IniItem* const entry = piece.item && !isHeader(piece) ? piece.item : nullptr;
            take(piece);
            if (entry)
                index.dropEntry(*entry);
        }
        section.header = section.last = nullptr;
    }
    // Dropping one may drop those that only led to it, so each is looked for by its path.
    for (const std::string& path : paths) {
        if (IniItem* const item = index.find(path))
            index.dropSection(item);
    }
}

} // namespace Repository::Documents
