#pragma once

#include <cstddef>
#include <string_view>

namespace Repository::Documents {

// What lies between the tokens of YAML: blanks, line ends, comments and indicators. Places are offsets; each
// function gives the place after what it skips.

bool isYamlBreak(char c);
bool isYamlBlank(char c);

std::size_t skipYamlBlanks(std::string_view text, std::size_t at);

bool hasYamlBreak(std::string_view text);

// To the end of the line, without its line end, and with it.
std::size_t findYamlLineEnd(std::string_view text, std::size_t at);
std::size_t skipYamlLine(std::string_view text, std::size_t at);
std::size_t skipYamlBreak(std::string_view text, std::size_t at);

// Without the line end that an offset is after.
std::size_t endOfYamlContent(std::string_view text, std::size_t at);

// Where the line of an offset begins.
std::size_t findYamlLine(std::string_view text, std::size_t at);

// Blanks, line ends and comments.
std::size_t skipYamlTrivia(std::string_view text, std::size_t at);

// After the last "-", "?" or ":" of a block that follow an offset; the offset itself where none does.
std::size_t endOfYamlIndicators(std::string_view text, std::size_t from, std::size_t to);

// Whether there is a comment between two tokens.
bool hasYamlComment(std::string_view text, std::size_t from, std::size_t to);

// After blanks and a comment up to the end of the line; the offset itself where something else follows.
std::size_t skipYamlTail(std::string_view text, std::size_t at);

// The end of a block of texts, which is one value, with the blanks and the comment behind its last element.
std::size_t endOfYamlList(std::string_view text, std::size_t lastElementEnd);

// How far an offset lies from the beginning of its line.
std::size_t columnOfYaml(std::string_view text, std::size_t at);

} // namespace Repository::Documents
