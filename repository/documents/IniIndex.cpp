#include "repository/documents/IniIndex.h"

#include "repository/documents/KeyText.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace Repository::Documents {

namespace {

std::uint32_t hashOf(std::string_view path)
{
    const std::size_t hash = std::hash<std::string_view>()(path);
    return static_cast<std::uint32_t>(hash ^ hash >> 32);
}

} // namespace

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
    const std::uint32_t number = numberOf(path, hashOf(path));
    return number == HashIndex::none ? nullptr : &items[number];
}

const IniItem* IniIndex::find(std::string_view path) const
{
    const std::uint32_t number = numberOf(path, hashOf(path));
    return number == HashIndex::none ? nullptr : &items[number];
}

std::uint32_t IniIndex::numberOf(std::string_view path, std::uint32_t hash) const
{
    return byPath.find(hash, [&](std::uint32_t number) { return items[number].path == path; });
}

IniItem& IniIndex::demand(std::string path, IniItem* parent)
{
    const std::uint32_t hash = hashOf(path);
    std::uint32_t number = numberOf(path, hash);
    if (number != HashIndex::none)
        return items[number];
    if (unused.empty()) {
        number = static_cast<std::uint32_t>(items.size());
        items.emplace_back();
    } else {
        number = unused.back();
        unused.pop_back();
    }
    byPath.insert(hash, number);
    IniItem& item = items[number];
    item.path = std::move(path);
    item.parent = parent;
    item.number = number;
    return item;
}

void IniIndex::drop(IniItem& item)
{
    const std::uint32_t number = item.number;
    byPath.erase(hashOf(item.path), number);
    item = IniItem();
    unused.push_back(number);
}

IniItem& IniIndex::demandSection(std::string_view path)
{
    IniItem* section = rootItem;
    for (std::size_t end = 0; end < path.size();) {
        end = std::min(path.find('.', section == rootItem ? 0 : end + 1), path.size());
        IniItem& deeper = demand(std::string(path.substr(0, end)), section);
        if (!deeper.section) {
            deeper.section = std::make_unique<IniSection>();
            sectionBytes += sizeof(IniItem) + sizeof(IniSection) + end;
        }
        section->section->deeper.insert(&deeper);
        section = &deeper;
    }
    return *section;
}

IniItem& IniIndex::demandEntry(IniItem& section, std::string_view name)
{
    return demand(joinPath(section.path, name), &section);
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
        drop(item);
}

void IniIndex::dropSection(IniItem* item)
{
    while (item != rootItem && !item->section->header && item->section->deeper.empty()) {
        IniItem* const parent = item->parent;
        parent->section->deeper.erase(item);
        item->section.reset();
        sectionBytes -= sizeof(IniItem) + sizeof(IniSection) + item->path.size();
        if (!item->entry)
            drop(*item);
        item = parent;
    }
}

} // namespace Repository::Documents
