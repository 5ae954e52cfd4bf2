#pragma once

#include "repository/documents/common/HashIndex.h"
#include "repository/documents/ini/IniPieces.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace Repository::Documents {

// What makes a node of the tree a section.
struct IniSection
{
    IniPiece* header = nullptr;          // none for the root, and while only deeper sections name this one
    IniPiece* last = nullptr;            // the last entry, or else the header
    std::size_t headers = 0;             // how many sections have this name; kept by the first
    std::unordered_set<IniItem*> deeper; // the sections right below
    HashIndex members;                   // all nodes right below, by their names
    bool going = false;                  // while it is decided whether it can be removed
};

// A node of the tree. It may be an entry and a section at once.
struct IniItem
{
    std::string_view name;                // its component of the path
    std::unique_ptr<std::string> ownName; // where the name is no view into the file
    IniItem* parent = nullptr;
    IniPiece* entry = nullptr;
    std::unique_ptr<IniSection> section;
    std::uint32_t entries = 0;       // how many entries of the section have this name; kept by the first
    std::uint32_t number = 0;        // in the index
    mutable std::uint32_t visit = 0; // the visit that met it last
};

// A name that stands in the file as in the path is kept as a view into the file, any other as a copy.
struct IniName
{
    std::string_view text;
    bool isInFile = false;
};

bool isHeader(const IniPiece& piece);

// How many entries and how many sections have the name of the first of them; 0 when there is none.
std::size_t countOfEntries(const IniItem* first);
std::size_t countOfSections(const IniItem* first);

// Where a path stands among those of one name.
struct IniSiblings
{
    std::string first; // path of the first sibling of the name
    std::size_t number = 1;
};
IniSiblings siblingsOf(std::string_view path);

// The nodes of an ini file, found by their paths without keeping any: a node knows its name and its parent,
// and a section what is in it. Finding, adding and taking out cost the same in a small and in a large file.
class IniIndex
{
public:
    IniIndex();

    IniItem& root() { return *rootItem; }
    const IniItem& root() const { return *rootItem; }

    // Null for an unknown path; the empty path is the root.
    IniItem* find(std::string_view path);
    const IniItem* find(std::string_view path) const;

    static std::string pathOf(const IniItem& item);

    // What the nodes of all sections take, in the index and with their paths in the tree.
    std::size_t getSectionBytes() const { return sectionBytes; }

    // The node of the next header of that path, or of the next entry of that name: the plain path for the
    // first, then path[2] and so on. What leads to a section is made where it is missing.
    IniItem& nextSection(const IniName& path);
    IniItem& nextEntry(IniItem& section, const IniName& name);

    // The node is no entry any more; it goes unless it is a section too.
    void dropEntry(IniItem& item);
    // Drops a section without header and deeper sections, and those that only led to it. None of its entries
    // may be left.
    void dropSection(IniItem* item);

private:
    std::uint32_t numberOf(const IniItem& section, std::string_view name) const;
    IniItem& demandSection(const IniName& path);
    IniItem& demand(IniItem& section, const IniName& name);
    IniItem& makeItem();
    void drop(IniItem& item);

    std::deque<IniItem> items;         // which stay where they are
    std::vector<std::uint32_t> unused; // numbers of items that were dropped
    IniItem* rootItem = nullptr;
    std::size_t sectionBytes = 0;
};

} // namespace Repository::Documents
