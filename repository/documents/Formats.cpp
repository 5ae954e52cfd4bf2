#include "repository/documents/Formats.h"

#include "repository/documents/ini/IniDocument.h"
#include "repository/documents/json/JsonDocument.h"
#include "repository/documents/txt/TxtDocument.h"
#include "repository/documents/xml/XmlDocument.h"

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

} // namespace Repository::Documents
