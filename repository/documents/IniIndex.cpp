#include "repository/documents/IniIndex.h"

#include "repository/documents/KeyText.h"

#include <algorithm>

namespace Repository::Documents {

bool isHeader(const IniPiece& piece)
{
    return piece.line.kind == IniLine::Kind::Header;
}

std::size_t countOfEntries(const IniItem* first)
{
    return first ? first->entries : 0;
}

std::size_t countOfSections(const IniItem* first)
{
    return first && first->section ? first->section->headers : 0;
}

IniSiblings siblingsOf(std::string_view path)
{
    const PathEnds ends = splitLast(path);
    const NumberedComponent last = splitNumber(ends.last);
    return {joinPath(ends.parent, last.name), last.number};
}

IniIndex::IniIndex()
{
    rootItem = &demand({}, nullptr);
    rootItem->section = std::make_unique<IniSection>();
}

IniItem* IniIndex::find(std::string_view path)
{
    const auto found = items.find(std::string(path));
    return found == items.end() ? nullptr : &found->second;
}

const IniItem* IniIndex::find(std::string_view path) const
{
    const auto found = items.find(std::string(path));
    return found == items.end() ? nullptr : &found->second;
}

IniItem& IniIndex::demand(std::string_view path, IniItem* parent)
{
    const auto [place, isNew] = items.try_emplace(std::string(path));
    IniItem& item = place->second;
    if (isNew) {
        item.path = &place->first;
        item.parent = parent;
    }
    return item;
}

IniItem& IniIndex::demandSection(std::string_view path)
{
    IniItem* section = rootItem;
    for (std::size_t end = 0; end < path.size();) {
        end = std::min(path.find('.', section == rootItem ? 0 : end + 1), path.size());
        IniItem& deeper = demand(path.substr(0, end), section);
        if (!deeper.section)
            deeper.section = std::make_unique<IniSection>();
        section->section->deeper.insert(&deeper);
        section = &deeper;
    }
    return *section;
}

IniItem& IniIndex::demandEntry(IniItem& section, std::string_view name)
{
    return demand(joinPath(*section.path, name), &section);
}

IniItem& IniIndex::nextSection(std::string_view path)
{
    IniItem& first = demandSection(path);
    const std::size_t number = ++first.section->headers;
    return number == 1 ? first : demandSection(joinNumber(path, number));
}

IniItem& IniIndex::nextEntry(IniItem& section, std::string_view name)
{
    IniItem& first = demandEntry(section, name);
    const std::size_t number = ++first.entries;
    return number == 1 ? first : demandEntry(section, joinNumber(name, number));
}

void IniIndex::dropEntry(IniItem& item)
{
    item.entry = nullptr;
    if (!item.section)
        items.erase(items.find(*item.path));
}

void IniIndex::dropSection(IniItem* item)
{
    while (item != rootItem && !item->section->header && item->section->deeper.empty()) {
        IniItem* const parent = item->parent;
        parent->section->deeper.erase(item);
        item->section.reset();
        if (!item->entry)
            items.erase(items.find(*item->path));
        item = parent;
    }
}

} // namespace Repository::Documents
