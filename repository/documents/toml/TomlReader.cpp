#include "repository/documents/toml/TomlReader.h"

#include "repository/documents/toml/TomlScanner.h"
#include "repository/documents/toml/TomlTokens.h"

#include <algorithm>
#include <array>
#include <toml++/toml.h>
#include <vector>

namespace Repository::Documents {

namespace {

// What the parser finds in the wrong place where a text uses what only TOML 1.1 has.
constexpr std::array newerForms{
    std::string_view("escape sequence '\\x'"),
    std::string_view("escape sequence '\\e'"),
    std::string_view("parsing time: expected ':'"),
    std::string_view("parsing time: encountered end-of-file"),
    std::string_view("inline table: expected key or closing '}', saw '\\n'"),
    std::string_view("inline table: expected key or closing '}', saw '\\r'"),
    std::string_view("inline table: expected key or closing '}', saw '#'"),
    std::string_view("saw closing '}' (dangling comma)"),
};

// What it finds where a text has no quotes.
constexpr std::array bareTexts{
    std::string_view("could not determine value type"),
    std::string_view("boolean: expected '"),
    std::string_view("floating-point: expected 'nan'"),
    std::string_view("floating-point: expected 'inf'"),
};

// What to do about it, for what people do most; the rest of the text begins where the error is.
std::string advise(std::string_view description, std::string_view rest, const std::string& reason)
{
    const auto has = [description](std::string_view form) {
        return description.find(form) != std::string_view::npos;
    };
    const auto begins = [rest](std::string_view form) { return startsWith(rest, form); };
    if (std::any_of(newerForms.begin(), newerForms.end(), has))
        return Reason::tr("%1; that is TOML 1.1, and Vantry reads TOML 1.0", {reason});
    if (std::any_of(bareTexts.begin(), bareTexts.end(), has))
        return Reason::tr("%1; a text needs quotes around it", {reason});
    if (has("unescaped control characters") && (begins("\n") || begins("\r")))
        return Reason::tr("%1; its line ends before the quotes close", {reason});
    if (has("unknown escape sequence"))
        return Reason::tr("%1; in double quotes a backslash is written twice, in single quotes once",
                          {reason});
    if (has("string: encountered end-of-file") || has("array: encountered end-of-file"))
        return Reason::tr("%1, which is not closed", {reason});
    if (begins("<<<<<<<") || begins("=======") || begins(">>>>>>>"))
        return Reason::tr("%1; a merge has left a mark of its conflicts", {reason});
    if (has("expected keys, tables") && (begins(";") || begins("//")))
        return Reason::tr("%1; a comment begins with #", {reason});
    return reason;
}

// "Error while parsing string: what" as "what, in a string".
std::string explain(std::string_view description, std::string_view rest)
{
    constexpr std::string_view beginning = "Error while parsing ";
    const std::size_t colon = description.find(": ");
    std::string text(description);
    if (startsWith(description, beginning) && colon != std::string_view::npos)
        text =
            Reason::tr("%1 (in this %2)", {description.substr(colon + 2),
                                           description.substr(beginning.size(), colon - beginning.size())});
    return advise(description, rest, text);
}

// The text from a place on; columns are characters.
std::string_view textFrom(std::string_view text, std::size_t line, std::size_t column)
{
    std::size_t at = 0;
    for (; line > 1 && at < text.size(); --line)
        at = skipTomlLine(text, at);
    const auto isContinued = [&] { return at < text.size() && (text[at] & '\xc0') == '\x80'; };
    for (; column > 1 && at < text.size(); --column) {
        ++at;
        while (isContinued())
            ++at;
    }
    return text.substr(at);
}

// The dot of a key by which tables lie too deep for the parser, whose stack grows with them, or none. In
// invalid TOML it may be any dot.
std::size_t findTooDeep(std::string_view text)
{
    std::vector<std::size_t> around; // each bracket, dots
    std::size_t dots = 0;
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        if (c == '"' || c == '\'') {
            at = skipTomlString(text, at);
            continue;
        }
        if (c == '.' && ++dots > TomlScanner::maximumDepth)
            return at;
        const bool endsKey = c == ',' || (around.empty() && (c == '\n' || c == '#'));
        if (c == '[' || c == '{') {
            around.push_back(dots);
        } else if ((c == ']' || c == '}') && !around.empty()) {
            dots = around.back();
            around.pop_back();
        } else if (endsKey) {
            dots = around.empty() ? 0 : around.back();
        }
        at = c == '#' ? skipTomlLine(text, at) : at + 1;
    }
    return std::string_view::npos;
}

} // namespace

Outcome TomlReader::check(std::string_view text)
{
    if (const std::size_t at = findTooDeep(text); at != std::string_view::npos)
        return outcomeAt(text, at,
                         Reason::tr("more than %1 tables lie within each other",
                                    {std::to_string(TomlScanner::maximumDepth)}));
    if (startsWith(text, utf8ByteOrderMark)) // which the parser would skip
        return {Reason::tr("a second byte-order mark"), 1, 1};
    try {
        (void)toml::parse(text);
        return {};
    } catch (const toml::parse_error& error) {
        const toml::source_position place = error.source().begin;
        const std::size_t line = std::max<std::size_t>(place.line, 1);
        const std::size_t column = std::max<std::size_t>(place.column, 1);
        return {explain(error.description(), textFrom(text, line, column)), line, column};
    }
}

} // namespace Repository::Documents
