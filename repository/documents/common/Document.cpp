#include "repository/documents/common/Document.h"

#include "repository/documents/common/ComponentCodec.h"

#include <algorithm>

namespace Repository::Documents {

Outcome Document::endRun(std::string&)
{
    return {};
}

Outcome Document::insertAll(std::string_view path, const std::vector<Entry>& entries, std::size_t& refused)
{
    std::string before = getBytes();
    const auto place = [path](const Entry& entry) {
        return entry.path.empty() ? std::string(path) : joinPath(path, entry.path);
    };
    beginRun();
    Outcome outcome;
    for (refused = 0; refused < entries.size(); ++refused) {
        outcome = insert(place(entries[refused]), entries[refused].value);
        if (!outcome.ok())
            break;
    }
    if (outcome.ok()) {
        std::string lacking;
        outcome = endRun(lacking);
        const auto isLacking = [&](const Entry& entry) { return place(entry) == lacking; };
        refused = std::size_t(std::find_if(entries.begin(), entries.end(), isLacking) - entries.begin());
    }
    if (!outcome.ok())
        parse(std::move(before));
    return outcome;
}

} // namespace Repository::Documents
