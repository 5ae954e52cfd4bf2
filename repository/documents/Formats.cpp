#include "repository/documents/Formats.h"

#include "repository/documents/ini/IniFormat.h"
#include "repository/documents/json/JsonFormat.h"
#include "repository/documents/txt/TxtFormat.h"
#include "repository/documents/xml/XmlFormat.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

const IniFormat ini;
const JsonFormat json;
const XmlFormat xml;
const TxtFormat txt;

} // namespace

const std::vector<const Format*>& getFormats()
{
    static const std::vector<const Format*> formats{&ini, &json, &xml, &txt};
    return formats;
}

const Format* findFormat(std::string_view name)
{
    const auto& formats = getFormats();
    const auto found = std::find_if(formats.begin(), formats.end(),
                                    [name](const Format* format) { return format->getName() == name; });
    return found == formats.end() ? nullptr : *found;
}

const Format& getDefaultFormat()
{
    return ini;
}

const std::vector<std::string>& getDocumentTypes()
{
    static const std::vector<std::string> types = [] {
        std::vector<std::string> names;
        for (const Format* format : getFormats())
            names.emplace_back(format->getName());
        return names;
    }();
    return types;
}

std::unique_ptr<Document> makeDocument(std::string_view type)
{
    const Format* format = findFormat(type);
    return format ? format->makeDocument() : nullptr;
}

} // namespace Repository::Documents
