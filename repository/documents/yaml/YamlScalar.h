#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Repository::Documents {

// The texts that scalars of YAML stand for, in their five styles. Spellings are those of a text that was
// read.

// Over one line or several.
std::string decodeYamlPlain(std::string_view spelled);

// With its quotes.
std::string decodeYamlQuoted(std::string_view spelled);

// From "|" or ">" on, without the end of its last line. The indentation is that of the block around it.
std::string decodeYamlBlock(std::string_view spelled, std::size_t indentation);

// What the first line of a block scalar says.
struct YamlBlockHeader
{
    bool isFolded = false;
    char chomping = 0;     // "-", "+" or none
    std::size_t digit = 0; // of the indentation; 0 for none
    std::size_t end = 0;   // of these characters
    std::size_t lines = 0; // where the lines begin, the end for none
};
YamlBlockHeader readYamlBlockHeader(std::string_view spelled);

// How far the lines of a block scalar are indented; 0 when none tells.
std::size_t indentationOfYamlBlock(std::string_view spelled, const YamlBlockHeader& header,
                                   std::size_t indentation);

} // namespace Repository::Documents
