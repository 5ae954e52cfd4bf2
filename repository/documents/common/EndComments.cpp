#include "repository/documents/common/EndComments.h"

#include "repository/documents/common/TextLine.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

bool isComment(std::string_view line, std::string_view signs)
{
    const std::size_t indent = indentOf(line);
    return indent < line.size() && signs.find(line[indent]) != std::string_view::npos;
}

// What a comment says, without the signs that begin it.
std::string_view contentOf(std::string_view line, std::string_view signs)
{
    line = trimBlanks(line);
    line.remove_prefix(std::min(line.find_first_not_of(signs), line.size()));
    return trimBlanks(line);
}

bool isHeader(std::string_view content)
{
    return content.size() > 2 && content.front() == '[' && content.back() == ']';
}

// A key of few words, and what separates it from its value.
bool isEntry(std::string_view content)
{
    constexpr int mostWords = 3;
    constexpr std::string_view prose = ",;!?()<>";
    const std::size_t separator = content.find('=');
    if (separator == std::string_view::npos)
        return false;
    const std::string_view key = trimBlanks(content.substr(0, separator));
    const auto isLetter = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
               c == '"' || c == '\'';
    };
    return !key.empty() && isLetter(key.front()) && key.find_first_of(prose) == std::string_view::npos &&
           std::count_if(key.begin(), key.end(), isBlank) < mostWords;
}

} // namespace

std::size_t findEndComments(std::string_view trivia, std::string_view signs, bool hasHeaderBelow)
{
    std::size_t end = 0;
    for (std::size_t at = 0; at < trivia.size();) {
        const std::size_t begin = at;
        std::size_t entriesEnd = 0; // in these lines, which no blank one separates
        bool isAboveHeader = false;
        for (; at < trivia.size() && !isAboveHeader; at = textLineAt(trivia, at).end) {
            const std::string_view line = textLineAt(trivia, at).content;
            if (isBlankLine(line))
                break;
            const std::string_view content = contentOf(line, signs);
            isAboveHeader = !isComment(line, signs) || isHeader(content);
            if (!isAboveHeader && isEntry(content))
                entriesEnd = textLineAt(trivia, at).end;
        }
        isAboveHeader = isAboveHeader || (hasHeaderBelow && at == trivia.size());
        if (isAboveHeader)
            return begin == 0 ? entriesEnd : end;
        if (at > begin && (begin == 0 || entriesEnd > 0))
            end = at;
        if (at < trivia.size())
            at = textLineAt(trivia, at).end;
    }
    return end;
}

} // namespace Repository::Documents
