#include "repository/documents/dialects/DesktopSpelling.h"

#include "repository/documents/dialects/Escapes.h"

#include <algorithm>
#include <charconv>

namespace Repository::Documents {

namespace {

constexpr Escapes escapes{"sntr\\", " \n\t\r\\"};

bool isItemMark(char c, bool isKde)
{
    return c == ';' || (isKde && c == ',');
}

// Two hex digits; what they lack is passed over.
char characterFromHex(std::string_view digits, Spelling::Reading& reading)
{
    unsigned code = 'x';
    const char* const end = digits.data() + digits.size();
    if (digits.size() < 2 || std::from_chars(digits.data(), end, code, 16).ptr != end)
        reading.isValid = false;
    return static_cast<char>(code);
}

Spelling::Reading read(std::string_view spelled, bool isKde)
{
    Spelling::Reading reading;
    for (std::size_t at = 0; at < spelled.size(); ++at) {
        const char c = spelled[at];
        if (c != '\\') {
            reading.text += c;
            continue;
        }
        const char letter = ++at < spelled.size() ? spelled[at] : '\0';
        if (const char escaped = escapes.characterOf(letter)) {
            reading.text += escaped;
        } else if (isItemMark(letter, isKde)) {
            (reading.text += '\\') += letter;
        } else if (isKde && letter == 'x') {
            reading.text += characterFromHex(spelled.substr(at + 1, 2), reading);
            at += 2;
        } else {
            reading.isValid = false;
            if (letter != '\0')
                reading.text += '\\';
            if (letter != '\0' && !isKde)
                reading.text += letter;
        }
    }
    if (isKde && startsWith(reading.text, utf8ByteOrderMark)) // QString does not take it for a character
        reading.text.erase(0, utf8ByteOrderMark.size());
    return reading;
}

bool endsEscaped(std::string_view text, std::size_t at)
{
    std::size_t count = 0;
    while (count < at && text[at - 1 - count] == '\\')
        ++count;
    return count % 2 == 1;
}

// Whether it is a list that has "\;" in an item.
bool hasItemMarks(std::string_view spelled, bool isKde)
{
    for (std::size_t at = 0; at < spelled.size(); ++at) {
        if (isItemMark(spelled[at], isKde) && endsEscaped(spelled, at))
            return true;
    }
    return false;
}

bool endsItem(std::string_view text)
{
    return !text.empty() && text.back() == ';' && !endsEscaped(text, text.size() - 1);
}

std::vector<std::string> write(std::string_view text, std::string_view before, bool isKde)
{
    const bool isList =
        hasItemMarks(before, isKde) || (endsItem(text) && (before.empty() || endsItem(before)));
    std::string spelled;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        const bool isOuter = at == 0 || at + 1 == text.size();
        const bool isMark = isList && at + 1 < text.size() && isItemMark(text[at + 1], isKde);
        const std::string_view one = text.substr(at, 1);
        if (isKde && static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t' && c != '\r')
            appendHex(spelled += "\\x", static_cast<unsigned char>(c), 2);
        else if ((c == ' ' && !isOuter) || (c == '\\' && isMark))
            spelled += c;
        else
            spelled += escapes.write(one);
    }
    return {spelled};
}

bool isLocaleCharacter(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           std::string_view("-_.@").find(c) != std::string_view::npos;
}

// Where the brackets around a language begin with which a key ends, as in "Name[de]"; its end without them.
std::size_t findLanguage(std::string_view key)
{
    const std::size_t bracket = key.rfind('[');
    const bool isLanguage = bracket != std::string_view::npos && bracket > 0 && key.back() == ']' &&
                            std::all_of(key.begin() + bracket + 1, key.end() - 1, isLocaleCharacter);
    return isLanguage ? bracket : key.size();
}

// As a value, with characters in hex that have a meaning in the name of a key or a section.
std::string writeName(std::string_view name, std::string_view meaningful)
{
    std::string spelled;
    const std::string asValue = write(name, {}, true).front();
    for (const char c : asValue) {
        if (meaningful.find(c) != std::string_view::npos)
            appendHex(spelled += "\\x", static_cast<unsigned char>(c), 2);
        else
            spelled += c;
    }
    return spelled;
}

// KConfig takes the escapes of a key away twice.
std::string readKey(std::string_view spelled)
{
    return read(read(spelled, true).text, true).text;
}

std::string writeKey(std::string_view key)
{
    const std::size_t language = findLanguage(key);
    const std::size_t end = key.substr(language) == "[]" ? key.size() : language;
    const std::string once = writeName(key.substr(0, end), "=#[]");
    std::string spelled;
    for (std::size_t at = 0; at < once.size(); ++at) {
        const bool isBackslash = once.compare(at, 2, "\\\\") == 0;
        spelled += isBackslash ? "\\\\\\\\" : once.substr(at, 1);
        at += isBackslash ? 1 : 0;
    }
    return spelled.append(key.substr(end));
}

std::string readGroup(std::string_view spelled)
{
    return read(spelled, true).text;
}

// A "$i" alone is an option of the section.
std::string writeGroup(std::string_view name)
{
    return writeName(name, name == "$i" ? "$" : "[]");
}

std::string explainKey(std::string_view key)
{
    return key.substr(0, findLanguage(key)).find_first_of("[]") == std::string_view::npos
               ? std::string()
               : Reason::tr("brackets in a key are for a language, as in \"Name[de]\"");
}

std::string explainSection(std::string_view name)
{
    return name.find_first_of("[]") == std::string_view::npos
               ? std::string()
               : Reason::tr("its program takes no brackets in the name of a section");
}

} // namespace

const Spelling desktopSpelling{
    [](std::string_view spelled) { return read(spelled, false); },
    [](std::string_view text, std::string_view before) { return write(text, before, false); },
    nullptr,
    nullptr,
    nullptr,
    explainKey,
    explainSection};

const Spelling kdeSpelling{
    [](std::string_view spelled) { return read(spelled, true); },
    [](std::string_view text, std::string_view before) { return write(text, before, true); },
    nullptr,
    readKey,
    writeKey,
    nullptr,
    nullptr,
    readGroup,
    writeGroup};

} // namespace Repository::Documents
