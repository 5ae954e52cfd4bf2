#include "repository/documents/xml/XmlDeclaration.h"

#include "repository/documents/common/CharacterSet.h"

#include <algorithm>
#include <array>

namespace Repository::Documents {

namespace {

constexpr std::string_view opening = "<?xml";
constexpr std::string_view blanks = " \t\r\n";
constexpr std::array<std::string_view, 2> utf8Names{"utf-8", "utf8"};
constexpr std::array<std::string_view, 3> asciiNames{"us-ascii", "ascii", "ansi_x3.4-1968"};

template <typename Names>
bool contains(const Names& names, const std::string& name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

XmlEncoding encodingOf(std::string name)
{
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    if (contains(utf8Names, name))
        return XmlEncoding::Utf8;
    if (contains(asciiNames, name))
        return XmlEncoding::Ascii;
    return CharacterSet::isKnown(name) ? XmlEncoding::CharacterSet : XmlEncoding::Unknown;
}

} // namespace

XmlDeclaration readXmlDeclaration(std::string_view bytes)
{
    constexpr std::string_view label = "encoding";
    XmlDeclaration declaration;
    if (bytes.substr(0, opening.size()) != opening)
        return declaration;
    const std::string_view line = bytes.substr(0, bytes.find("?>"));
    const std::size_t at = line.find(label);
    const std::size_t equals =
        at == std::string_view::npos ? at : line.find_first_not_of(blanks, at + label.size());
    if (equals == std::string_view::npos || line[equals] != '=')
        return declaration;
    const std::size_t quote = line.find_first_not_of(blanks, equals + 1);
    if (quote == std::string_view::npos || (line[quote] != '"' && line[quote] != '\''))
        return declaration;
    declaration.offset = quote + 1;
    declaration.name = line.substr(quote + 1, line.find(line[quote], quote + 1) - quote - 1);
    declaration.encoding = encodingOf(declaration.name);
    return declaration;
}

} // namespace Repository::Documents
