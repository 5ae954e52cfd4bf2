#include "files/TemporaryName.h"

#include <cstring>
#include <random>
#include <string_view>

namespace Files {

namespace {

constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789";
constexpr std::string_view hexDigits = "0123456789abcdef";
constexpr std::size_t randomLength = 8;
constexpr std::size_t digestLength = 16;
constexpr std::string_view replacementEnding = ".new";
constexpr std::string_view journalEnding = ".old";
constexpr std::string_view exchangeEnding = ".swap";

std::string randomStart()
{
    std::random_device random;
    std::string name = TemporaryName::prefix;
    for (std::size_t i = 0; i < randomLength; ++i)
        name += letters[random() % letters.size()];
    return name;
}

// The beginning of it, which tells contents apart well enough.
std::string hexOf(const FileDigest& content)
{
    std::string hex;
    for (const char c : content.hash.substr(0, digestLength / 2)) {
        const auto byte = static_cast<unsigned char>(c);
        hex += hexDigits[byte >> 4];
        hex += hexDigits[byte & 15];
    }
    return hex;
}

// An exchange's name is the start, "-OLD-NEW" and the ending.
constexpr std::size_t oldAt = std::char_traits<char>::length(TemporaryName::prefix) + randomLength + 1;
constexpr std::size_t newAt = oldAt + digestLength + 1;

bool isExchange(const std::string& name)
{
    const auto isDigest = [&name](std::size_t at) {
        return name[at - 1] == '-' && name.find_first_not_of(hexDigits, at) == at + digestLength;
    };
    return name.size() == newAt + digestLength + exchangeEnding.size() && isDigest(oldAt) &&
           isDigest(newAt) && name.compare(newAt + digestLength, std::string::npos, exchangeEnding) == 0;
}

} // namespace

std::string TemporaryName::make(Kind kind)
{
    return randomStart().append(kind == Kind::Journal ? journalEnding : replacementEnding);
}

std::string TemporaryName::makeExchange(const FileDigest& oldContent, const FileDigest& newContent)
{
    return randomStart().append("-" + hexOf(oldContent) + "-" + hexOf(newContent)).append(exchangeEnding);
}

std::optional<TemporaryName::Kind> TemporaryName::kindOf(const std::string& name)
{
    const std::size_t start = std::strlen(prefix);
    const std::size_t end = start + randomLength;
    if (name.compare(0, start, prefix) != 0 || name.find_first_not_of(letters, start) != end)
        return {};
    if (name.compare(end, std::string::npos, replacementEnding) == 0)
        return Kind::Replacement;
    if (name.compare(end, std::string::npos, journalEnding) == 0)
        return Kind::Journal;
    return isExchange(name) ? std::optional(Kind::Exchange) : std::nullopt;
}

bool TemporaryName::saysOld(const std::string& name, const FileDigest& content)
{
    return name.compare(oldAt, digestLength, hexOf(content)) == 0;
}

bool TemporaryName::saysNew(const std::string& name, const FileDigest& content)
{
    return name.compare(newAt, digestLength, hexOf(content)) == 0;
}

} // namespace Files
