#pragma once

#include "repository/documents/common/Document.h"

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace Repository::Documents {

// The index that a name is, in its plain form; nothing for any other name.
std::optional<std::size_t> readIndex(std::string_view name);

// Why there can be no element of an array at a path.
Outcome beyondEnd(std::string_view path, std::size_t greatestIndex);

// The groups among entries that are arrays: those that a file says to be, and in files that do not say it
// those of 0, 1, 2 ..., in any order. Texts alone do not make such a group: they would be one list.
class ArrayGroups
{
public:
    // In the order of a tree; they must outlive this.
    explicit ArrayGroups(const std::vector<Entry>& entries);

    bool contain(std::string_view path) const { return arrays.count(path) > 0; }
    const std::unordered_set<std::string_view>& getPaths() const { return arrays; }

private:
    // A group of which not all has been seen.
    struct Group
    {
        std::string_view path;
        std::optional<bool> isArray;
        std::size_t count = 0;
        std::size_t greatest = 0;
        bool hasOnlyNumbers = true;
        bool hasOnlyTexts = true;
    };

    void open(std::string_view path, const Entry& entry);
    void close();

    std::vector<Group> groups; // each in the one before
    std::unordered_set<std::string_view> arrays;
};

} // namespace Repository::Documents
