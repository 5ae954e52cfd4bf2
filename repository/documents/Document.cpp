#include "repository/documents/Document.h"

#include "repository/documents/IniDocument.h"
#include "repository/documents/JsonDocument.h"
#include "repository/documents/KeyText.h"
#include "repository/documents/TxtDocument.h"
#include "repository/documents/XmlDocument.h"

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

Outcome Document::insertAll(std::string_view path, const std::vector<Entry>& entries, std::size_t& refused)
{
    std::string before = getBytes();
    for (refused = 0; refused < entries.size(); ++refused) {
        const std::string& below = entries[refused].path;
        Outcome outcome =
            insert(below.empty() ? std::string(path) : joinPath(path, below), entries[refused].value);
        if (!outcome.ok()) {
            parse(std::move(before));
            return outcome;
        }
    }
    return {};
}

} // namespace Repository::Documents
