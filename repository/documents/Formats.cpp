#include "repository/documents/Formats.h"

#include "repository/documents/dialects/Dialects.h"
#include "repository/documents/ini/IniFormat.h"
#include "repository/documents/json/JsonFormat.h"
#include "repository/documents/toml/TomlFormat.h"
#include "repository/documents/txt/TxtFormat.h"
#include "repository/documents/xml/XmlFormat.h"
#include "repository/documents/yaml/YamlFormat.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

// The formats as they are offered, and one of each dialect.
struct FormatTable
{
    FormatTable()
    {
        for (const Dialect& dialect : getDialects()) {
            std::string type = typeOf(dialect);
            dialectTypes.push_back(type);
            if (dialect.format == ini.getName())
                dialects.push_back(std::make_unique<IniFormat>(std::move(type), dialect));
            else
                dialects.push_back(std::make_unique<TxtFormat>(std::move(type), dialect));
        }
        for (const Format* format : formats)
            types.emplace_back(format->getName());
    }

    static std::string typeOf(const Dialect& dialect)
    {
        return std::string(dialect.format) + ':' + std::string(dialect.name);
    }

    const IniFormat ini{"ini", getGenericDialect("ini")};
    const JsonFormat json;
    const XmlFormat xml;
    const TxtFormat txt{"txt", getGenericDialect("txt")};
    const TomlFormat toml;
    const YamlFormat yaml;
    const std::vector<const Format*> formats{&ini, &json, &xml, &txt, &toml, &yaml};
    std::vector<std::unique_ptr<const Format>> dialects;
    std::vector<std::string> types;
    std::vector<std::string> dialectTypes;
};

const FormatTable& table()
{
    static const FormatTable formats;
    return formats;
}

std::string typeOrNone(const Dialect* dialect)
{
    return dialect ? FormatTable::typeOf(*dialect) : std::string();
}

} // namespace

const std::vector<const Format*>& getFormats()
{
    return table().formats;
}

const Format* findFormat(std::string_view type)
{
    for (const Format* format : table().formats) {
        if (format->getName() == type)
            return format;
    }
    const auto& dialects = table().dialects;
    const auto found = std::find_if(dialects.begin(), dialects.end(),
                                    [type](const auto& format) { return format->getName() == type; });
    return found == dialects.end() ? nullptr : found->get();
}

const std::vector<std::string>& getDocumentTypes()
{
    return table().types;
}

const std::vector<std::string>& getDialectTypes()
{
    return table().dialectTypes;
}

std::string_view formatOf(std::string_view type)
{
    return type.substr(0, type.find(':'));
}

std::string recogniseDialect(std::string_view type, std::string_view path, std::string_view beginning)
{
    const Dialect* const byName = path.empty() ? nullptr : recogniseName(type, path);
    const std::string known = typeOrNone(byName ? byName : recogniseText(type, beginning));
    return known.empty() ? std::string(type) : known;
}

std::string typeByName(std::string_view path)
{
    return typeOrNone(recogniseName({}, path));
}

std::string typeByText(std::string_view beginning)
{
    return typeOrNone(recogniseText({}, beginning));
}

std::unique_ptr<Document> makeDocument(std::string_view type)
{
    const Format* format = findFormat(type);
    return format ? format->makeDocument() : nullptr;
}

} // namespace Repository::Documents
