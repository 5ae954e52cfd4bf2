#include "repository/fleet/KeyCodec.h"

#include "host/FrameworkCore/Values/Text.h"
#include "repository/common/PathRules.h"
#include "repository/documents/common/ComponentCodec.h"

#include <algorithm>

namespace Repository {

namespace {

bool isPlain(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '-' || c == '.';
}

// Of an upper-case hex digit; -1 for any other.
int digitOf(char c)
{
    return c >= '0' && c <= '9' ? c - '0' : c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

} // namespace

std::string KeyCodec::keyOf(std::string_view path)
{
    std::string key;
    key.reserve(path.size());
    for (const char c : path) {
        if (isPlain(c))
            key += c;
        else
            FrameworkCore::Values::appendHex(key += '%', static_cast<unsigned char>(c), 2,
                                             "0123456789ABCDEF");
    }
    return key;
}

bool KeyCodec::isPath(std::string_view path)
{
    if (path.empty())
        return true;
    for (qsizetype names = 1; names <= deepestPath; ++names) {
        const std::size_t end = path.find('.');
        if (!Documents::isComponent(path.substr(0, end)))
            return false;
        if (end == std::string_view::npos)
            return true;
        path.remove_prefix(end + 1);
    }
    return false;
}

std::optional<std::string> KeyCodec::pathOf(std::string_view key)
{
    if (std::all_of(key.begin(), key.end(), isPlain))
        return isPath(key) ? std::optional(std::string(key)) : std::nullopt;
    std::string path;
    for (std::size_t at = 0; at < key.size(); ++at) {
        if (key[at] != '%') {
            path += key[at];
            continue;
        }
        const bool isWhole = at + 2 < key.size();
        const int high = isWhole ? digitOf(key[at + 1]) : -1;
        const int low = isWhole ? digitOf(key[at + 2]) : -1;
        if (high < 0 || low < 0)
            return {};
        path += static_cast<char>(high * 16 + low);
        at += 2;
    }
    return keyOf(path) == key && isPath(path) ? std::optional(std::move(path)) : std::nullopt;
}

} // namespace Repository
