#pragma once

#include "repository/documents/common/ArrayGroups.h"
#include "repository/documents/common/Document.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Repository::Documents {

// How a format of trees makes new entries a tree, to be written in one of its forms. A Branch has a key, a
// pointer to the value of an entry, null for a group, children and whether it is an array.

// The elements of an array by their indexes, whatever order they came in.
template <typename Branch>
void sortElements(Branch& branch)
{
    if (branch.isArray)
        std::sort(branch.children.begin(), branch.children.end(), [](const Branch& a, const Branch& b) {
            return readIndex(a.key).value_or(0) < readIndex(b.key).value_or(0);
        });
    for (Branch& child : branch.children)
        sortElements(child);
    if (branch.isArray) {
        for (Branch& child : branch.children)
            child.key.clear();
    }
}

// Gives why something has no place in the format, or a branch for a new entry and all below it. The entries
// outlive it; keyOf(component, error) gives the key that a component of a path is.
template <typename Branch, typename KeyOf>
std::string growBranch(const std::vector<Entry>& entries, Branch& branch, const KeyOf& keyOf)
{
    const ArrayGroups arrays(entries);
    std::string error;
    branch.isArray = arrays.contain({});
    // By path, where in its parent each branch is; a branch may move while others are added beside it.
    std::unordered_map<std::string_view, std::unordered_map<std::string_view, std::size_t>> places;
    for (const Entry& entry : entries) {
        Branch* at = &branch;
        const std::string_view path = entry.path;
        for (std::size_t begin = 0; !path.empty() && begin <= path.size();) {
            const std::size_t end = std::min(path.find('.', begin), path.size());
            const std::string_view component = path.substr(begin, end - begin);
            auto& siblings = places[path.substr(0, begin)];
            const auto [place, isNew] = siblings.try_emplace(component, at->children.size());
            if (isNew) {
                Branch child;
                child.isArray = arrays.contain(path.substr(0, end));
                child.key = at->isArray ? std::string(component) : keyOf(component, error);
                at->children.push_back(std::move(child));
            }
            at = &at->children[place->second];
            begin = end + 1;
        }
        if (entry.value.type != Type::Group)
            at->value = &entry.value;
        if (!error.empty())
            return error;
    }
    sortElements(branch);
    return error;
}

} // namespace Repository::Documents
