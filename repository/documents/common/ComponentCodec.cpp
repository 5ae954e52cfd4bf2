#include "repository/documents/common/ComponentCodec.h"

#include "repository/documents/common/Values.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace Repository::Documents {

namespace {

void appendEncoded(std::string& out, std::string_view bytes)
{
    for (const char byte : bytes)
        appendHex(out += '%', static_cast<unsigned char>(byte), 2, "0123456789ABCDEF");
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Beyond ASCII: control characters, directional formatting, line and paragraph separators.
bool isInvisibleControl(char32_t code)
{
    return (code >= 0x80 && code <= 0x9F) || code == 0x061C || (code >= 0x200E && code <= 0x200F) ||
           (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

// A whole UTF-8 sequence, or one byte that belongs to none.
bool mustBeEncoded(std::string_view sequence)
{
    const auto first = static_cast<unsigned char>(sequence.front());
    if (sequence.size() == 1)
        return first < 0x20 || first >= 0x7F || first == '.' || first == '*' || first == '%' || first == ';';
    return isInvisibleControl(utf8CodePoint(sequence));
}

// Whether all codes of a component are those of printable ASCII.
bool hasPrintableCodes(std::string_view component)
{
    for (std::size_t at = component.find('%'); at != std::string_view::npos;
         at = component.find('%', at + 1)) {
        const char high = component[at + 1];
        if (high < '2' || high > '7' || component.substr(at, 3) == "%7F")
            return false;
    }
    return true;
}

bool isNothingButNul(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return c == '\0'; });
}

} // namespace

bool isPlainKey(std::string_view key)
{
    static constexpr auto plain = [] {
        std::array<bool, 256> isPlain{};
        for (std::size_t c = 0x20; c < 0x7F; ++c)
            isPlain[c] = c != '.' && c != '*' && c != '%' && c != ';';
        return isPlain;
    }();
    return !key.empty() && key.front() != '@' && key.front() != '#' && key.back() != ']' &&
           std::all_of(key.begin(), key.end(), [](char c) { return plain[static_cast<unsigned char>(c)]; });
}

bool endsInNumber(std::string_view key)
{
    if (key.empty() || key.back() != ']')
        return false;
    std::size_t at = key.size() - 1;
    while (at > 0 && isDigit(key[at - 1]))
        --at;
    return at > 0 && at < key.size() - 1 && key[at - 1] == '[';
}

std::string encodeKey(std::string_view key)
{
    std::string out;
    appendKey(out, key);
    return out;
}

void appendKey(std::string& out, std::string_view key)
{
    if (isPlainKey(key)) {
        out += key;
        return;
    }
    if (isNothingButNul(key)) {
        appendEncoded(out, std::string(key.size() + 1, '\0'));
        return;
    }
    const std::size_t closing = endsInNumber(key) ? key.size() - 1 : key.size();
    for (std::size_t at = 0; at < key.size();) {
        const std::size_t length = std::max<std::size_t>(1, utf8Length(key.substr(at)));
        const std::string_view sequence = key.substr(at, length);
        const bool leadingMark = at == 0 && (sequence[0] == '@' || sequence[0] == '#');
        if (leadingMark || at == closing || mustBeEncoded(sequence))
            appendEncoded(out, sequence);
        else
            out += sequence;
        at += length;
    }
}

std::string encodePath(std::string_view name)
{
    return mapPath(name, [](std::string_view part) {
        const bool isComponent = part.find('%') != std::string_view::npos && decodeKey(part);
        return isComponent ? std::string(part) : encodeKey(part);
    });
}

std::string decodePath(std::string_view path)
{
    return mapPath(path, [](std::string_view component) {
        const std::optional<std::string> key = decodeKey(component);
        const bool isPlain = key && (key->empty() || hasPrintableCodes(component));
        return isPlain && encodePath(*key) == component ? *key : std::string(component);
    });
}

std::optional<std::string> decodeKey(std::string_view component)
{
    std::string key;
    key.reserve(component.size());
    for (std::size_t at = 0; at < component.size(); ++at) {
        if (component[at] != '%') {
            key += component[at];
            continue;
        }
        unsigned byte = 0;
        const std::string_view hex = component.substr(at + 1, 2);
        if (hex.size() < 2 || std::from_chars(hex.data(), hex.data() + 2, byte, 16).ptr != hex.data() + 2)
            return std::nullopt;
        key += static_cast<char>(byte);
        at += 2;
    }
    if (!key.empty() && isNothingButNul(key))
        key.pop_back();
    if (encodeKey(key) != component)
        return std::nullopt;
    return key;
}

NumberedComponent splitNumber(std::string_view component)
{
    if (!endsInNumber(component))
        return {component, 1};
    const std::size_t open = component.rfind('[');
    const std::string_view digits = component.substr(open + 1, component.size() - open - 2);
    std::size_t number = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (read.ec != std::errc() || digits.front() == '0' || number < 2)
        return {component, 1};
    return {component.substr(0, open), number};
}

void appendNumber(std::string& path, std::size_t number)
{
    if (number > 1)
        path += '[' + std::to_string(number) + ']';
}

std::string joinNumber(std::string_view name, std::size_t number)
{
    std::string component(name);
    appendNumber(component, number);
    return component;
}

bool isComponent(std::string_view component)
{
    std::string_view key = splitNumber(component).name;
    if (key.size() > 1 && (key.front() == '@' || key.front() == '#'))
        key.remove_prefix(1);
    return isPlainKey(key) || decodeKey(key);
}

std::optional<std::vector<std::string_view>> splitPath(std::string_view path)
{
    std::vector<std::string_view> components;
    while (true) {
        const std::size_t dot = path.find('.');
        components.push_back(path.substr(0, dot));
        if (components.back().empty())
            return std::nullopt;
        if (dot == std::string_view::npos)
            return components;
        path.remove_prefix(dot + 1);
    }
}

PathEnds splitLast(std::string_view path)
{
    const std::size_t dot = path.rfind('.');
    if (dot == std::string_view::npos)
        return {std::string_view(), path};
    return {path.substr(0, dot), path.substr(dot + 1)};
}

std::string joinPath(std::string_view parent, std::string_view component)
{
    std::string path;
    path.reserve(parent.size() + component.size() + 1);
    path += parent;
    if (!parent.empty())
        path += '.';
    path += component;
    return path;
}

} // namespace Repository::Documents
