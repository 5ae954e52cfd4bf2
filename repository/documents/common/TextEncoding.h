#pragma once

#include "repository/documents/common/Document.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Repository::Documents {

// The encoding of a file. Documents work on UTF-8 without a byte-order mark; encode gives the very bytes that
// decode took. Invalid UTF-8 passes through; a lone surrogate of UTF-16 is three bytes in the text.
class TextEncoding
{
public:
    enum class Kind : std::uint8_t {
        Utf8,
        Utf8WithByteOrderMark,
        Utf16Le, // UTF-16 only with its byte-order mark
        Utf16Be,
        Declared
    };

    // What the format allows beside UTF-8. A byte-order mark in the file decides.
    struct Rules
    {
        bool utf16 = true;
        std::string declared; // the character set that the file names, one that is known; empty for none
    };

    // Turns bytes into text, in place. After an error, which has a position, they are unchanged.
    Outcome decode(std::string& bytes, Rules rules);

    // The bytes of the text with its byte-order mark; findRefusal must have passed all of it.
    std::string encode(std::string text) const;

    // Why the encoding cannot hold a piece of text that an edit adds; empty when it can.
    std::string findRefusal(std::string_view text) const;

    // False for a beginning that decode would take for another encoding.
    bool mayBegin(std::string_view text) const;

    // How many bytes the piece of text takes in the file, and those that are before the whole text.
    std::size_t sizeOf(std::string_view text) const;
    // How long the text is that a piece of the file becomes.
    std::size_t textSizeOf(std::string_view bytes) const;
    std::size_t byteOrderMarkSize() const { return byteOrderMark().size(); }

    Kind getKind() const { return kind; }

private:
    std::string_view byteOrderMark() const;
    std::string findRefusalOfSet(std::string_view text) const;

    Kind kind = Kind::Utf8;
    std::string characterSet; // with Declared
};

} // namespace Repository::Documents
