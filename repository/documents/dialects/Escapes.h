#pragma once

#include <string>
#include <string_view>

namespace Repository::Documents {

// Escapes of a backslash and a letter, each with the character that it is.
struct Escapes
{
    std::string_view letters;
    std::string_view characters;

    // NUL for no letter of theirs.
    char characterOf(char letter) const
    {
        const std::size_t at = letters.find(letter);
        return at == std::string_view::npos ? '\0' : characters[at];
    }

    // The text with an escape for each character that has one.
    std::string write(std::string_view text) const
    {
        std::string escaped;
        for (const char c : text) {
            const std::size_t at = characters.find(c);
            if (at == std::string_view::npos)
                escaped += c;
            else
                (escaped += '\\') += letters[at];
        }
        return escaped;
    }
};

} // namespace Repository::Documents
