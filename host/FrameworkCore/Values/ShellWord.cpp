#include "host/FrameworkCore/Values/ShellWord.h"

#include "host/FrameworkCore/Values/PrintableText.h"

#include <algorithm>

namespace FrameworkCore::Values {

namespace {

bool isPlain(char c)
{
    const bool isLetter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
    return isLetter || std::string_view("_@%+=:,./-").find(c) != std::string_view::npos;
}

// Each of the characters with what goes before it.
std::string escaped(std::string_view text, std::string_view characters, std::string_view before)
{
    std::string result;
    for (const char c : text) {
        if (characters.find(c) != std::string_view::npos)
            result += before;
        result += c;
    }
    return result;
}

} // namespace

std::string shellWord(std::string_view text)
{
    if (!text.empty() && std::all_of(text.begin(), text.end(), isPlain))
        return std::string(text);
    if (printableLine(text) == text)
        return '\'' + escaped(text, "'", "'\\'") + '\'';
    return "$'" + printableLine(escaped(text, "\\'", "\\")) + '\'';
}

} // namespace FrameworkCore::Values
