#pragma once

#include <cstddef>
#include <string_view>

namespace Repository::Documents {

// A place in a text as an editor shows it: both numbers count from 1.
struct TextPosition
{
    std::size_t line = 1;
    std::size_t column = 1; // in characters; a byte that is not valid UTF-8 counts as one
};

// The position of a byte. Lines end at "\n", "\r\n" or "\r"; a byte order mark at the start takes no column.
TextPosition positionOf(std::string_view text, std::size_t offset);

} // namespace Repository::Documents
