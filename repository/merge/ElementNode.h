#pragma once

#include "repository/documents/common/Document.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Repository {

// An entry of a document with all below it. The texts of a list are nodes, as the elements of other arrays.
struct ElementNode
{
    std::string path; // in its document
    Documents::Value value;
    bool isArray = false;
    bool isCopy = false; // of what is written elsewhere, and counted there
    std::vector<ElementNode> children;
    std::uint64_t content = 0; // the same for nodes of the same content, in whatever order their members are

    // The entries at and below it, with paths relative to it.
    std::vector<Documents::Entry> entries() const;
};

using ElementNodes = std::vector<ElementNode>;

// Reads the entries of these paths, none of which is below another; what is not there is left out.
std::map<std::string, ElementNode> readNodes(const Documents::Document& document,
                                             const std::set<std::string>& paths);

// How many values two nodes have in common; none when it is less than half of them.
std::size_t countCommonValues(const ElementNode& one, const ElementNode& other);

} // namespace Repository
