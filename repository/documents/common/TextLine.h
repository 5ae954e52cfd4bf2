#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Repository::Documents {

// What the line formats have in common. Lines end at "\n", "\r\n" or "\r".

// A line of the text without its line end, and where the next one begins.
struct TextLine
{
    std::string_view content;
    std::size_t end = 0;
};
TextLine textLineAt(std::string_view text, std::size_t begin);

// That of the first line; "\n" where it has none.
std::string lineEndOf(std::string_view text);

// How many lines end with this character.
std::size_t countLineEnds(std::string_view text, char lineEnd);

// True for an empty text and for one that ends with its line.
bool endsLine(std::string_view text);

// The lines with "\n" after the last one, to which a "\n" that follows does not belong.
std::string endedByLineFeed(std::string_view lines);

bool isLineEnd(char c);

// Blanks inside of a line.
bool isBlank(char c);
std::string_view trimBlanks(std::string_view text);
std::size_t indentOf(std::string_view content);
bool isBlankLine(std::string_view content);

// Where, in lines of blanks and comments, those begin that no blank line separates from what follows.
std::size_t findCommentsAbove(std::string_view lead);

// True for a line whose last character is a backslash that is not itself written by one before it.
bool endsInBackslash(std::string_view content);

// The quote that is around a value and nowhere else in it; 0 for none.
char quoteAround(std::string_view value);

// A separator with one blank where it has any.
std::string plainSeparator(std::string_view separator);

// A sibling's separator for a key of another size; blanks that align a column are adjusted. One blank does so
// when the sibling is known to be in a column with others.
std::string alignedSeparator(std::string_view separator, std::size_t siblingSize, std::size_t size,
                             bool isInColumn = false);

} // namespace Repository::Documents
