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

// "Error while parsing string: what" as "what, in a string".
std::string explain(std::string_view description)
{
    constexpr std::string_view beginning = "Error while parsing ";
    const std::size_t colon = description.find(": ");
    std::string text(description);
    if (startsWith(description, beginning) && colon != std::string_view::npos)
        text =
            Reason::tr("%1 (in this %2)", {description.substr(colon + 2),
                                           description.substr(beginning.size(), colon - beginning.size())});
    const bool isNewer = std::any_of(newerForms.begin(), newerForms.end(), [description](auto form) {
        return description.find(form) != std::string_view::npos;
    });
    return isNewer ? Reason::tr("%1; that is TOML 1.1, and Vantry reads TOML 1.0", {text}) : text;
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
        return {explain(error.description()), std::max<std::size_t>(place.line, 1),
                std::max<std::size_t>(place.column, 1)};
    }
}

} // namespace Repository::Documents
