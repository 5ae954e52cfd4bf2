#include "repository/documents/toml/TomlReader.h"

#include <algorithm>
#include <array>
#include <toml++/toml.h>

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

} // namespace

Outcome TomlReader::check(std::string_view text)
{
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
