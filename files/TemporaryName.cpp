#include "files/TemporaryName.h"

#include <cstring>
#include <random>
#include <string_view>

namespace Files {

namespace {

constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789";
constexpr std::size_t randomLength = 8;

std::string_view endingOf(TemporaryName::Kind kind)
{
    return kind == TemporaryName::Kind::Replacement ? ".new" : ".old";
}

} // namespace

std::string TemporaryName::make(Kind kind)
{
    std::random_device random;
    std::string name = prefix;
    for (std::size_t i = 0; i < randomLength; ++i)
        name += letters[random() % letters.size()];
    return name.append(endingOf(kind));
}

std::optional<TemporaryName::Kind> TemporaryName::kindOf(const std::string& name)
{
    const std::size_t start = std::strlen(prefix);
    const std::size_t end = start + randomLength;
    if (name.compare(0, start, prefix) != 0 || name.find_first_not_of(letters, start) != end)
        return {};
    for (const Kind kind : {Kind::Replacement, Kind::Journal}) {
        if (name.compare(end, std::string::npos, endingOf(kind)) == 0)
            return kind;
    }
    return {};
}

} // namespace Files
