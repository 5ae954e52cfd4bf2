#include "repository/merge/EntryList.h"

namespace Repository {

EntryList::EntryList(const Documents::Document& document)
{
    document.visit([this](const Documents::Entry& entry) {
        paths += entry.path;
        ends.push_back(paths.size());
        values.push_back(entry.value);
    });
}

std::string_view EntryList::getPath(std::size_t position) const
{
    const std::size_t begin = position == 0 ? 0 : ends[position - 1];
    return std::string_view(paths).substr(begin, ends[position] - begin);
}

} // namespace Repository
