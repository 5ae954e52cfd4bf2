#pragma once

#include <cstddef>
#include <string_view>

namespace Repository::Documents {

// The blanks, line breaks and comments between two tokens, by the offsets where an edit may cut them. Breaks
// inside of comments do not count.
struct JsonTrivia
{
    explicit JsonTrivia(std::string_view text);

    static constexpr std::size_t npos = std::string_view::npos;

    std::size_t firstLineEnd = 0;     // after the part that belongs to the line on which the trivia begins
    std::size_t lastLineStart = 0;    // where the part of the line on which it ends begins, with its break
    std::size_t lastBreak = npos;     // the last line break
    std::size_t indentation = 0;      // after the blanks that follow the last break, or the start
    bool firstLineHasComment = false; // the part up to firstLineEnd holds a comment
    bool endsInLineComment = false;   // more text on the same line would become part of a comment
    bool hasComment = false;

    bool hasBreak() const { return lastBreak != npos; }
};

// Offset after the blanks and comments at an offset of a json text.
std::size_t skipTrivia(std::string_view text, std::size_t at);

// Offset after the line break at an offset, which may be "\n", "\r\n" or "\r".
std::size_t skipBreak(std::string_view text, std::size_t at);

// Offset after the comment at an offset; the offset itself when none begins there; npos when it has no end.
std::size_t skipComment(std::string_view text, std::size_t at);

// Where, in the trivia before a node, the lines of comments begin that are right above it and without a blank
// line between; npos without any.
std::size_t findOwnComments(std::string_view leading);

std::string_view leadingBlanks(std::string_view text);
std::string_view trailingBlanks(std::string_view text);
bool isBlank(std::string_view text);

} // namespace Repository::Documents
