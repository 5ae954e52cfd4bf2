#include "repository/documents/common/KeyText.h"
#include "repository/documents/common/Refusal.h"
#include "repository/documents/ini/IniDocument.h"

#include <algorithm>

// What takes pieces out of an ini file.

namespace Repository::Documents {

namespace {

// The section of a header or entry goes.
bool goes(const IniPiece& piece)
{
    return (isHeader(piece) ? piece.item : piece.item->parent)->section->going;
}

// The section and all below it.
template <typename Item>
std::vector<Item*> sectionsFrom(Item& top)
{
    std::vector<Item*> all{&top};
    for (std::size_t at = 0; at < all.size(); ++at)
        all.insert(all.end(), all[at]->section->deeper.begin(), all[at]->section->deeper.end());
    return all;
}

bool isIn(const IniPiece* piece, const IniItem& group)
{
    const IniItem* item = piece ? piece->item : nullptr;
    while (item && item != &group)
        item = item->parent;
    return item;
}

// The nearest section around another one that stays when that goes.
const IniItem& sectionLeftWithout(const IniItem& item)
{
    const IniItem* section = item.parent;
    while (section->parent && !section->entry && !section->section->header &&
           section->section->deeper.size() == 1)
        section = section->parent;
    return *section;
}

} // namespace

bool IniDocument::removalMovesSiblings(std::string_view path) const
{
    const IniItem* const item = index.find(path);
    if (!item || path.empty())
        return false;
    const IniSiblings siblings = siblingsOf(path);
    const IniItem* const first = index.find(siblings.first);
    return (item->entry && siblings.number < countOfEntries(first)) ||
           (item->section && item->section->header && siblings.number < countOfSections(first));
}

bool IniDocument::removalMovesGroups(std::string_view path) const
{
    const IniItem* const top = index.find(path);
    if (!top || !top->parent || !top->section)
        return false;
    const IniItem& group = sectionLeftWithout(*top);
    if (!group.parent)
        return false;
    // A section that goes on right above or right below begins where it did, as far as others can tell.
    for (const IniItem* const section : sectionsFrom(*top)) {
        const IniPiece* const header = section->section->header;
        if (!header || isIn(header->above, *top))
            continue;
        const IniPiece* below = section->section->last->below;
        while (isIn(below, *top))
            below = isHeader(*below) ? below->item->section->last->below : below->below;
        if (!isIn(header->above, group) && !isIn(below, group))
            return true;
    }
    return false;
}

Outcome IniDocument::remove(std::string_view path)
{
    IniItem* const item = index.find(path);
    if (!item || path.empty())
        return refused(item ? "the root of a file is not removed" : "there is no such entry");
    const std::vector<IniItem*> going = item->section ? sectionsFrom(*item) : std::vector<IniItem*>();
    for (IniItem* const section : going)
        section->section->going = true;
    IniPiece* nextFirst = firstHeader;
    while (nextFirst && (!isHeader(*nextFirst) || nextFirst->line.indent > 0 || goes(*nextFirst)))
        nextFirst = nextFirst->below;
    const IniComments comments = nextFirst ? iniCommentsOf(nextFirst->line.key()) : IniComments::BehindValues;
    Outcome outcome = checkRemoval(*item, going, comments);
    for (IniItem* const section : going)
        section->section->going = false;
    if (!outcome.ok())
        return outcome;
    const IniSiblings siblings = siblingsOf(path);
    const bool moves = item->section && item->section->header &&
                       siblings.number < countOfSections(index.find(siblings.first));
    if (item->section && item->section->header)
        --index.find(siblings.first)->section->headers;
    if (item->entry)
        takeEntry(*item);
    takeSections(going);
    firstHeader = nextFirst;
    style.comments = comments;
    // Other sections get new paths, with all that they hold.
    return moves ? reload(getBytes(), true) : Outcome();
}

Outcome IniDocument::checkRemoval(const IniItem& item, const std::vector<IniItem*>& going,
                                  IniComments comments) const
{
    if ((item.entry && !entryCanGo(*item.entry)) || !sectionsCanGo(going))
        return refused("without it the line below would be read as part of the value above");
    if (!frontCanGo(item))
        return refused("without it the file would begin like a file of another encoding");
    if (!allowsComments(comments))
        return refused("without it, comments of the file would be read as part of values, or the other way "
                       "round");
    return {};
}

bool IniDocument::allowsComments(IniComments comments) const
{
    if (comments == style.comments)
        return true;
    for (const IniPiece* piece = pieces.front(); piece; piece = piece->next) {
        const IniLine& now = piece->line;
        if (now.kind != IniLine::Kind::Entry || goes(*piece))
            continue;
        const std::optional<IniLine> line = scanSingle(now.text, comments);
        if (!line || line->key() != now.key() || line->value() != now.value())
            return false;
    }
    return true;
}

bool IniDocument::frontCanGo(const IniItem& item) const
{
    const IniPiece* front = pieces.front();
    while (front && (item.entry == front || (front->item && goes(*front))))
        front = (isHeader(*front) ? front->item->section->last : front)->next;
    return !front || encoding.mayBegin(front->line.text);
}

bool IniDocument::entryCanGo(const IniPiece& entry) const
{
    return !entry.above || !entry.below ||
           !wouldSwallow(entry.above->line, entry.below->line, gapBelow(*entry.above) | gapBelow(entry));
}

void IniDocument::takeEntry(IniItem& item)
{
    IniPiece& piece = *item.entry;
    IniSection& section = *item.parent->section;
    // Above it stands another entry of the section or its header, or nothing at the root.
    if (section.last == &piece)
        section.last = piece.above;
    const IniSiblings siblings = siblingsOf(IniIndex::pathOf(item));
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
    for (const IniItem* item : going) {
        const IniPiece* const header = item->section->header;
        const IniPiece* const below = header ? item->section->last->below : nullptr;
        // Only an indented header can be taken for the end of the value above.
        if (!below || below->line.indent == 0 || goes(*below))
            continue;
        const IniPiece* above = header->above;
        while (above && goes(*above))
            above = above->above;
        if (above && wouldSwallow(above->line, below->line, {true, false}))
            return false;
    }
    return true;
}

void IniDocument::takeSections(const std::vector<IniItem*>& going)
{
    std::vector<std::string> paths;
    for (IniItem* const item : going) {
        paths.push_back(IniIndex::pathOf(*item));
        IniSection& section = *item->section;
        if (!section.header)
            continue;
        const IniPiece* const end = section.last->next;
        for (IniPiece* at = section.header; at != end;) {
            IniPiece& piece = *at;
            at = at->next;
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
