#include "repository/documents/ini/IniIndex.h"

#include "repository/documents/common/KeyText.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace Repository::Documents {

namespace {

std::uint32_t hashOf(std::string_view name)
{
    const std::size_t hash = std::hash<std::string_view>()(name);
    return static_cast<std::uint32_t>(hash ^ hash >> 32);
}

std::size_t pathSizeOf(const IniItem& item)
{
    std::size_t size = 0;
    for (const IniItem* at = &item; at->parent; at = at->parent)
        size += at->name.size() + (size > 0 ? 1 : 0);
    return size;
}

std::size_t bytesOf(const IniItem& section)
{
    return sizeof(IniItem) + sizeof(IniSection) + pathSizeOf(section);
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

IniIndex::IniIndex() : rootItem(&makeItem())
{
    rootItem->section = std::make_unique<IniSection>();
}

const IniItem* IniIndex::find(std::string_view path) const
{
    const IniItem* item = rootItem;
    while (item && !path.empty()) {
        const std::size_t end = std::min(path.find('.'), path.size());
        const std::uint32_t number =
            end + 1 != path.size() && item->section ? numberOf(*item, path.substr(0, end)) : HashIndex::none;
        item = number == HashIndex::none ? nullptr : &items[number];
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return item;
}

IniItem* IniIndex::find(std::string_view path)
{
    const IniItem* const item = std::as_const(*this).find(path);
    return item ? &items[item->number] : nullptr;
}

std::string IniIndex::pathOf(const IniItem& item)
{
    std::string path(pathSizeOf(item), '.');
    std::size_t end = path.size();
    for (const IniItem* at = &item; at->parent; at = at->parent) {
        path.replace(end - at->name.size(), at->name.size(), at->name);
        end -= at->name.size() + (at->parent->parent ? 1 : 0);
    }
    return path;
}

std::uint32_t IniIndex::numberOf(const IniItem& section, std::string_view name) const
{
    return section.section->members.find(hashOf(name),
                                         [&](std::uint32_t number) { return items[number].name == name; });
}

IniItem& IniIndex::makeItem()
{
    if (unused.empty()) {
        IniItem& item = items.emplace_back();
        item.number = static_cast<std::uint32_t>(items.size() - 1);
        return item;
    }
    IniItem& item = items[unused.back()];
    item.number = unused.back();
    unused.pop_back();
    return item;
}

IniItem& IniIndex::demand(IniItem& section, const IniName& name)
{
    const std::uint32_t number = numberOf(section, name.text);
    if (number != HashIndex::none)
        return items[number];
    IniItem& item = makeItem();
    if (!name.isInFile)
        item.ownName = std::make_unique<std::string>(name.text);
    item.name = item.ownName ? std::string_view(*item.ownName) : name.text;
    item.parent = &section;
    section.section->members.insert(hashOf(name.text), item.number);
    return item;
}

void IniIndex::drop(IniItem& item)
{
    const std::uint32_t number = item.number;
    item.parent->section->members.erase(hashOf(item.name), number);
    item = IniItem();
    unused.push_back(number);
}

IniItem& IniIndex::demandSection(const IniName& path)
{
    IniItem* section = rootItem;
    for (std::size_t at = 0; at < path.text.size();) {
        const std::size_t end = std::min(path.text.find('.', at), path.text.size());
        IniItem& deeper = demand(*section, {path.text.substr(at, end - at), path.isInFile});
        if (!deeper.section) {
            deeper.section = std::make_unique<IniSection>();
            sectionBytes += bytesOf(deeper);
        }
        section->section->deeper.insert(&deeper);
        section = &deeper;
        at = end + 1;
    }
    return *section;
}

IniItem& IniIndex::nextSection(const IniName& path)
{
    IniItem& first = demandSection(path);
    const std::size_t number = ++first.section->headers;
    return number == 1 ? first : demandSection({joinNumber(path.text, number)});
}

IniItem& IniIndex::nextEntry(IniItem& section, const IniName& name)
{
    IniItem& first = demand(section, name);
    const std::size_t number = ++first.entries;
    return number == 1 ? first : demand(section, {joinNumber(name.text, number)});
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
        sectionBytes -= bytesOf(*item);
        item->section.reset();
        if (!item->entry)
            drop(*item);
        item = parent;
    }
}

} // namespace Repository::Documents
