#pragma once

#include "repository/documents/common/Document.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Repository::Documents {

// How the text of a file is encoded in its bytes. Documents work on UTF-8 without a byte-order mark and leave
// the rest to this class: encode gives the very bytes that decode took. UTF-8 passes as it is, with bytes
// that are no characters too; half a surrogate pair of UTF-16 is in the text as the three bytes that UTF-8
// would have for it.
class TextEncoding
{
public:
    enum class Kind : std::uint8_t {
        Utf8,
        Utf8WithByteOrderMark,
        Utf16Le, // UTF-16 always has its mark: without one a file is not taken for it
        Utf16Be,
        Declared
    };

    // What the format of the file allows beside UTF-8. A mark in the file has the last word.
    struct Rules
    {
        bool utf16 = true;
        std::string declared; // the character set that the file names, one that is known; empty for none
    };

    // Turns the bytes of a file into its text, in place; with plain UTF-8 there is nothing to turn. After an
    // error, which has a place, the bytes are as they were.
    Outcome decode(std::string& bytes, Rules rules);

    // The bytes of a file with this text, its mark included. Every character must be one that findRefusal
    // lets pass.
    std::string encode(std::string text) const;

    // Why the file cannot hold this piece of text, for a person; empty when it can. An edit asks for what it
    // adds.
    std::string findRefusal(std::string_view text) const;

    // False for a text that decode would take for one of another encoding because of how it begins.
    bool mayBegin(std::string_view text) const;

    // How many bytes the piece of text takes in the file, and those that are before the whole text.
    std::size_t sizeOf(std::string_view text) const;
    std::size_t byteOrderMarkSize() const { return byteOrderMark().size(); }

    Kind getKind() const { return kind; }

private:
    std::string_view byteOrderMark() const;

    Kind kind = Kind::Utf8;
    std::string characterSet; // with Declared
};

} // namespace Repository::Documents
