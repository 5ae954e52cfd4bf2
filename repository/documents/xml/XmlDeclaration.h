#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Repository::Documents {

enum class XmlEncoding : std::uint8_t { Utf8, Ascii, CharacterSet, Unknown };

// What the first line of a file says about its encoding.
struct XmlDeclaration
{
    XmlEncoding encoding = XmlEncoding::Utf8;
    std::string name;       // as the file spells it
    std::size_t offset = 0; // where it does
};

// Of the bytes of a file. A file without a declaration, or with a mark that tells its encoding, whatever it
// declares, is UTF-8 here.
XmlDeclaration readXmlDeclaration(std::string_view bytes);

} // namespace Repository::Documents
