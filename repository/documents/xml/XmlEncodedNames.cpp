#include "repository/documents/xml/XmlEncodedNames.h"

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/xml/XmlFile.h"

#include <algorithm>
#include <charconv>

namespace Repository::Documents {

namespace {

constexpr std::string_view root = "root";
constexpr std::string_view declaration = "<?vantry names=\"encoded\"?>\n";
constexpr std::string_view emptyName = "_x_"; // it has no character of its own
constexpr std::string_view groupMark = "_x_group";
constexpr std::uint32_t loneByte = 0xDC00; // and the byte, of one that belongs to no character

bool mayBeInName(std::string_view character, bool isFirst)
{
    return character != ":" && isXmlName(isFirst ? std::string(character) : "a" + std::string(character));
}

std::string escapeOf(std::uint32_t code)
{
    std::string escape = "_x";
    appendHex(escape, code, code > 0xFFFF ? 8 : 4);
    return escape + '_';
}

bool isLoneByte(std::uint32_t code)
{
    return code >= loneByte + 0x80 && code <= loneByte + 0xFF;
}

// Of a character, or a byte that belongs to none.
std::uint32_t codeOf(std::string_view character)
{
    const auto first = static_cast<unsigned char>(character.front());
    return character.size() == 1 && first >= 0x80 ? loneByte + first
                                                  : std::uint32_t(utf8CodePoint(character));
}

// The character that an escape at the front of a text is for; nothing without one.
std::optional<std::uint32_t> escapedAt(std::string_view text)
{
    for (const std::size_t digits : {4, 8}) {
        std::uint32_t code = 0;
        const char* const end = text.data() + digits + 2;
        if (text.size() < digits + 3 || text.substr(0, 2) != "_x" || *end != '_')
            continue;
        const auto [stop, error] = std::from_chars(text.data() + 2, end, code, 16);
        const bool isSurrogate = code >= 0xD800 && code < 0xE000;
        if (error == std::errc() && stop == end && code <= 0x10FFFF && (!isSurrogate || isLoneByte(code)))
            return code;
    }
    return {};
}

std::string encodeName(std::string_view name)
{
    std::string encoded;
    for (std::size_t at = 0; at < name.size();) {
        const std::string_view character =
            name.substr(at, std::max<std::size_t>(utf8Length(name.substr(at)), 1));
        const bool isEscapeLike = escapedAt(name.substr(at)) || (at == 0 && startsWith(name, emptyName));
        if (isEscapeLike || !mayBeInName(character, at == 0))
            encoded += escapeOf(codeOf(character));
        else
            encoded += character;
        at += character.size();
    }
    return encoded.empty() ? std::string(emptyName) : encoded;
}

std::string decodeName(std::string_view encoded)
{
    std::string name;
    if (encoded == emptyName)
        return name;
    while (!encoded.empty()) {
        const auto escaped = escapedAt(encoded);
        if (escaped && isLoneByte(*escaped))
            name += static_cast<char>(*escaped - loneByte);
        else if (escaped)
            appendUtf8(name, *escaped);
        else
            name += encoded.front();
        encoded.remove_prefix(escaped ? escapeOf(*escaped).size() : 1);
    }
    return name;
}

// Of the name in a component, which is neither an attribute nor a text.
template <typename Change>
std::string changeName(std::string_view component, const Change& change)
{
    const NumberedComponent numbered = splitNumber(component);
    const auto key = decodeKey(numbered.name);
    if (!key || component.front() == '@' || component.front() == '#')
        return std::string(component);
    return joinNumber(encodeKey(change(*key)), numbered.number);
}

} // namespace

Entry XmlEncodedNames::encode(const Entry& entry)
{
    std::string path(root);
    if (!entry.path.empty())
        path = joinPath(path, mapPath(entry.path, [](std::string_view component) {
                            return changeName(component, encodeName);
                        }));
    return {entry.isArray == false ? joinPath(path, groupMark) : path, entry.value};
}

Entry XmlEncodedNames::decode(const Entry& entry)
{
    const std::size_t end = entry.path.find('.');
    if (end == std::string::npos)
        return {{}, entry.value};
    const std::string_view path = std::string_view(entry.path).substr(end + 1);
    const PathEnds ends = splitLast(path);
    const bool isMark = ends.last == groupMark;
    const std::string_view encoded = isMark ? ends.parent : path;
    return {
        encoded.empty()
            ? std::string()
            : mapPath(encoded, [](std::string_view component) { return changeName(component, decodeName); }),
        entry.value, isMark ? std::optional(false) : std::nullopt};
}

void XmlEncodedNames::declareIn(std::string& text)
{
    const std::size_t end = startsWith(text, "<?xml ") ? text.find("?>\n") : std::string::npos;
    text.insert(end == std::string::npos ? 0 : end + 3, declaration);
}

bool XmlEncodedNames::areDeclaredIn(const Document& document)
{
    std::string text = document.getBytes();
    const std::size_t begin = text.find(declaration.substr(0, declaration.size() - 1));
    return begin != std::string::npos && begin < 200 && text.find('<', 1) >= begin;
}

} // namespace Repository::Documents
