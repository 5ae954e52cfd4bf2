#include "repository/documents/common/Dialect.h"

#include "repository/documents/common/TextLine.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

bool has(std::string_view set, char c)
{
    return set.find(c) != std::string_view::npos;
}

bool goesOn(std::string_view content, Dialect::Continuation continuation)
{
    if (continuation == Dialect::Continuation::AnyBackslash)
        return !isBlankLine(content) && trimBlanks(content).back() == '\\';
    return continuation == Dialect::Continuation::Backslash && endsInBackslash(content);
}

// Where the comment after a value begins, or the end of the content. The quote is that which is open.
std::size_t findCommentAfter(std::string_view content, const Dialect& dialect, char& quote)
{
    if (dialect.commentsAfter.empty())
        return content.size();
    for (std::size_t at = 0; at < content.size(); ++at) {
        const char c = content[at];
        if (c == '\\' && (quote != '\0' || dialect.escapesOutsideQuotes))
            ++at;
        else if (quote != '\0')
            quote = c == quote ? '\0' : quote;
        else if (has(dialect.quotes, c))
            quote = c;
        else if (has(dialect.commentsAfter, c))
            return at;
    }
    return content.size();
}

// Whether a line begins with one of the words, and not as a key.
bool isDirective(std::string_view content, std::string_view words)
{
    const std::string_view first = content.substr(0, content.find_first_of(" \t"));
    const std::string_view rest = trimBlanks(content.substr(first.size()));
    return !rest.empty() && rest.front() != '=' &&
           (' ' + std::string(words) + ' ').find(' ' + std::string(first) + ' ') != std::string::npos;
}

} // namespace

std::string foldedKey(std::string_view key, Dialect::Keys keys)
{
    if (keys == Dialect::Keys::Exact)
        return std::string(key);
    std::string folded = keys == Dialect::Keys::DashIsUnderscore ? std::string(key) : lowered(key);
    if (keys == Dialect::Keys::DashIsUnderscore)
        std::replace(folded.begin(), folded.end(), '-', '_');
    if (keys == Dialect::Keys::IgnoreCaseAndBlanks)
        folded.erase(std::remove_if(folded.begin(), folded.end(), isBlank), folded.end());
    return folded;
}

ValueExtent measureValue(std::string_view text, const Dialect& dialect)
{
    ValueExtent extent;
    char& quote = extent.openQuote;
    for (std::size_t at = 0;;) {
        const TextLine line = textLineAt(text, at);
        const std::size_t comment = findCommentAfter(line.content, dialect, quote);
        extent.end = at + comment;
        extent.linesEnd = line.end;
        const bool isClosedBelow =
            dialect.quotesRunOn && quote != '\0' && text.find(quote, line.end) != std::string_view::npos;
        if (comment < line.content.size() || !(isClosedBelow || goesOn(line.content, dialect.continuation)))
            return extent;
        at = line.end;
        while (dialect.commentsBetweenLines && at < text.size() &&
               isSkipped(textLineAt(text, at).content, dialect))
            at = textLineAt(text, at).end;
        if (at == text.size())
            return extent;
        extent.continued = true;
    }
}

std::size_t findCommentAfterBlank(std::string_view content, std::size_t from, std::string_view marks)
{
    std::size_t at = content.find_first_of(marks, from);
    while (at != std::string_view::npos && at > 0 && !isBlank(content[at - 1]))
        at = content.find_first_of(marks, at + 1);
    return std::min(at, content.size());
}

bool isSkipped(std::string_view content, const Dialect& dialect)
{
    const std::size_t begin = indentOf(content);
    if (begin == content.size())
        return false;
    const bool isOption = dialect.hasKeyMarks && trimBlanks(content) == "[$i]"; // of the whole file
    if (!dialect.directives.empty() && isDirective(content, dialect.directives))
        return true;
    return has(dialect.comments, content[begin]) || has(dialect.skipped, content[begin]) || isOption;
}

} // namespace Repository::Documents
