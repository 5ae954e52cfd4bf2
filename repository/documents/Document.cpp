#include "repository/documents/Document.h"

#include "repository/documents/IniDocument.h"
#include "repository/documents/JsonDocument.h"
#include "repository/documents/KeyText.h"
#include "repository/documents/TxtDocument.h"
#include "repository/documents/XmlDocument.h"

#include <algorithm>

namespace Repository::Documents {

const std::vector<std::string>& getDocumentTypes()
{
    static const std::vector<std::string> types{"ini", "json", "xml", "txt"};
    return types;
}

std::unique_ptr<Document> makeDocument(std::string_view type)
{
    if (type == "ini")
        return std::make_unique<IniDocument>();
    if (type == "json")
        return std::make_unique<JsonDocument>();
    if (type == "xml")
        return std::make_unique<XmlDocument>();
    if (type == "txt")
        return std::make_unique<TxtDocument>();
    return nullptr;
}

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
