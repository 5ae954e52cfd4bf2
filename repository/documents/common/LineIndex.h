#pragma once

#include "repository/documents/common/HashIndex.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// What makes a node of the tree a section.
struct LineSection
{
    std::uint32_t header = HashIndex::none; // piece; none for the root, and while only deeper ones name it
    std::uint32_t last = HashIndex::none;   // piece of the last entry, or else the header
    std::uint32_t headers = 0;              // how many sections have this name; kept by the first
    std::uint32_t deeper = 0;               // how many sections are right below
    bool going = false;                     // while it is decided whether it can be removed
};

// An entry, a group, a section, or several of these. A repeated entry is a node of the same name with the
// number 2 and up; sections are numbered apart.
struct LineNode
{
    std::string_view name;                // without the number
    std::unique_ptr<std::string> ownName; // where the name is no view into the file
    std::unique_ptr<HashIndex> children;  // of a group
    std::unique_ptr<LineSection> section; // in formats that have them
    std::uint32_t number = 1;
    std::uint32_t count = 0; // entries of this name in the group; kept by the first
    std::uint32_t entry = HashIndex::none;
    std::uint32_t parent = HashIndex::none;
    std::uint32_t firstChild = HashIndex::none;
    std::uint32_t lastChild = HashIndex::none;
    std::uint32_t next = HashIndex::none; // siblings, as they came or were moved
    std::uint32_t previous = HashIndex::none;
    mutable std::uint32_t visit = 0; // the visit that met it last

    bool hasHeader() const { return section && section->header != HashIndex::none; }
};

// Where a path is among those of one name.
struct NumberedPath
{
    std::string first; // path of the first sibling of the name
    std::size_t number = 1;
};
NumberedPath numberedPath(std::string_view path);

// The nodes of a file of lines by their paths, of which none is kept: a node knows its name and parent, and a
// group its children. Cost does not depend on the size of the file.
class LineIndex
{
public:
    static constexpr std::uint32_t none = HashIndex::none;
    static constexpr std::uint32_t root = 0;

    LineIndex();

    void reserve(std::size_t count) { nodes.reserve(count + 1); }
    LineNode& node(std::uint32_t id) { return nodes[id]; }
    const LineNode& node(std::uint32_t id) const { return nodes[id]; }

    // none for an unknown path; the empty path is the root.
    std::uint32_t find(std::string_view path) const;
    std::uint32_t findSibling(std::uint32_t id, std::uint32_t number) const;

    // The node of an unnumbered path, created with all above it if missing. Names are views if the path
    // outlives the index, or else copies.
    std::uint32_t getOrCreate(std::string_view path, bool lasts);
    // The first node of a name in a group, with a copy of the name.
    std::uint32_t getOrCreateGroup(std::uint32_t parent, std::string_view name)
    {
        return getOrCreateChild(parent, name, 1, false);
    }
    // The node for the next entry of that name in the group.
    std::uint32_t getOrCreateNext(std::uint32_t parent, std::string_view name, bool lasts);

    // The section of the next header of that path, created with all above it if missing.
    std::uint32_t getOrCreateSection(std::string_view path, bool lasts);
    void becomeSection(std::uint32_t id);

    // How many entries and how many sections have the name of the first of them; 0 for none.
    std::size_t countOfEntries(std::uint32_t first) const;
    std::size_t countOfSections(std::uint32_t first) const;

    // What the nodes of all sections take, in the index and with their paths in the tree.
    std::size_t getSectionBytes() const { return sectionBytes; }

    // Change the order of siblings.
    void moveAfter(std::uint32_t id, std::uint32_t sibling);
    void moveToEnd(std::uint32_t id) { moveAfter(id, node(node(id).parent).lastChild); }

    // Gives a node another name, which no sibling has.
    void rename(std::uint32_t id, std::string_view name);

    // Drops a node that is neither an entry nor a group nor has a header, and those that only led to it.
    void prune(std::uint32_t id);

    // Whether a node is the group or lies in it.
    bool isWithin(std::uint32_t id, std::uint32_t group) const;
    // The nearest group around a node that stays when the node goes.
    std::uint32_t groupLeftWithout(std::uint32_t id) const;

    std::string pathOf(std::uint32_t id) const;
    static void appendComponent(std::string& path, const LineNode& node);

    // The node and all below it.
    std::vector<std::uint32_t> subtree(std::uint32_t id) const;

private:
    std::uint32_t findChild(std::uint32_t parent, std::string_view name, std::uint32_t number) const;
    std::uint32_t getOrCreateChild(std::uint32_t parent, std::string_view name, std::uint32_t number,
                                   bool lasts);
    void link(std::uint32_t id, std::uint32_t previous);
    void unlink(std::uint32_t id);
    void erase(std::uint32_t id);
    std::size_t bytesOf(std::uint32_t section) const;

    std::vector<LineNode> nodes;
    std::vector<std::uint32_t> unused;
    std::size_t sectionBytes = 0;
};

} // namespace Repository::Documents
