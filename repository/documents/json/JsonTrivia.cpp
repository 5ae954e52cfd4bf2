#include "repository/documents/json/JsonTrivia.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

constexpr std::string_view blanks = " \t";

bool isBreak(char c)
{
    return c == '\n' || c == '\r';
}

} // namespace

std::size_t skipBreak(std::string_view text, std::size_t at)
{
    const bool pair = text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n';
    return at + (pair ? 2 : 1);
}

std::size_t skipComment(std::string_view text, std::size_t at)
{
    const std::string_view opening = text.substr(at, 2);
    if (opening == "//")
        return std::min(text.find_first_of("\r\n", at), text.size());
    if (opening != "/*")
        return at;
    const std::size_t close = text.find("*/", at + 2);
    return close == std::string_view::npos ? close : close + 2;
}

std::size_t skipTrivia(std::string_view text, std::size_t at)
{
    while (true) {
        at = std::min(text.find_first_not_of(" \t\r\n", at), text.size());
        const std::size_t next = skipComment(text, at);
        if (next == at || next == std::string_view::npos)
            return at;
        at = next;
    }
}

JsonTrivia::JsonTrivia(std::string_view text)
{
    bool onFirstLine = true;
    firstLineEnd = text.size();
    indentation = std::min(text.find_first_not_of(blanks), text.size());
    std::size_t at = 0;
    while (at < text.size()) {
        if (isBreak(text[at])) {
            firstLineEnd = onFirstLine ? at : firstLineEnd;
            onFirstLine = false;
            lastBreak = lastLineStart = at;
            at = skipBreak(text, at);
            indentation = std::min(text.find_first_not_of(blanks, at), text.size());
            endsInLineComment = false;
            continue;
        }
        const std::size_t next = std::min(skipComment(text, at), text.size());
        if (next == at) {
            ++at;
            continue;
        }
        const std::string_view comment = text.substr(at, next - at);
        hasComment = true;
        endsInLineComment = comment[1] == '/';
        if (comment.find_first_of("\r\n") != npos) {
            firstLineEnd = onFirstLine ? at : firstLineEnd;
            onFirstLine = false;
            lastLineStart = next;
        }
        firstLineHasComment = firstLineHasComment || onFirstLine;
        at = next;
    }
}

std::size_t findOwnComments(std::string_view leading)
{
    constexpr std::size_t npos = std::string_view::npos;
    std::size_t found = npos;
    std::size_t lineStart = npos; // the trivia begins in the line of what is before it
    bool isBlankSoFar = false;
    for (std::size_t at = 0; at < leading.size();) {
        if (isBreak(leading[at])) {
            found = isBlankSoFar ? npos : found;
            at = lineStart = skipBreak(leading, at);
            isBlankSoFar = true;
            continue;
        }
        const std::size_t next = std::min(skipComment(leading, at), leading.size());
        if (next > at && lineStart != npos) {
            found = found == npos ? lineStart : found;
            isBlankSoFar = false;
        }
        at = std::max(next, at + 1);
    }
    return found;
}

std::string_view leadingBlanks(std::string_view text)
{
    return text.substr(0, std::min(text.find_first_not_of(blanks), text.size()));
}

std::string_view trailingBlanks(std::string_view text)
{
    const std::size_t last = text.find_last_not_of(blanks);
    return last == std::string_view::npos ? text : text.substr(last + 1);
}

bool isBlank(std::string_view text)
{
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

} // namespace Repository::Documents
