#pragma once

#include "repository/documents/common/Document.h"

#include <string>
#include <string_view>
#include <vector>

namespace Repository {

// The entries of a document in their order, as a copy that stays when the document changes. A million of them
// lie in few pieces of memory.
class EntryList
{
public:
    explicit EntryList(const Documents::Document& document);

    std::size_t size() const { return values.size(); }
    std::string_view getPath(std::size_t position) const;
    const FrameworkCore::Values::Value& getValue(std::size_t position) const { return values[position]; }

private:
    std::string paths;             // one after the other
    std::vector<std::size_t> ends; // of the paths in them
    std::vector<FrameworkCore::Values::Value> values;
};

} // namespace Repository
