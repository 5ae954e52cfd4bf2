#include "repository/documents/yaml/YamlFaults.h"

#include "repository/documents/common/Values.h"

#include <algorithm>
#include <iterator>

namespace Repository::Documents {

namespace {

struct Explanation
{
    std::string_view message; // how it begins
    std::string (*explain)(std::string_view message);
};

constexpr Explanation explanations[] = {
    {"plain scalar cannot start with",
     [](std::string_view message) {
         const std::size_t quote = message.find('\'');
         return Reason::tr("a text that begins with \"%1\" must be in quotes",
                           {message.substr(std::min(quote + 1, message.size()), 1)});
     }},
    {"invalid nested block mapping on the same line",
     [](std::string_view) {
         return Reason::tr(
             "a second \":\" on this line; a text that has a \":\" and a space in it must be in "
             "quotes");
     }},
    {"invalid multiline plain key",
     [](std::string_view) {
         return Reason::tr(
             "this text would go on in the next line and be a key there; either a space behind a "
             "\":\" is missing here, or the next line is indented too far");
     }},
    {"could not find expected ':'",
     [](std::string_view) { return Reason::tr("this is not an entry, for which it needs a key and \":\""); }},
    {"invalid trailing content after single-quoted",
     [](std::string_view) {
         return Reason::tr("something follows the quote that ends the text; one within it is written twice");
     }},
    {"invalid trailing content after double-quoted",
     [](std::string_view) {
         return Reason::tr(
             "something follows the quote that ends the text; one within it is written as \\\"");
     }},
    {"invalid comment without whitespace",
     [](std::string_view) { return Reason::tr("a comment needs a space in front of its \"#\""); }},
    {"tab character may not be used",
     [](std::string_view) { return Reason::tr("a tab indents this line, where YAML takes only spaces"); }},
    {"invalid indentation in mapping",
     [](std::string_view) { return Reason::tr("this line is indented unlike all entries above it"); }},
    {"wrong indendation in sequence",
     [](std::string_view) { return Reason::tr("this line is indented unlike all entries above it"); }},
    {"block sequence on the same line",
     [](std::string_view) { return Reason::tr("a list in lines begins on the line after its key"); }},
    {"missing comma in flow",
     [](std::string_view) {
         return Reason::tr("a comma is missing here, or the bracket that closes what is above");
     }},
    {"unsupport version",
     [](std::string_view) { return Reason::tr("only YAML of version 1 is read, as 1.2 is"); }},
    {"indentation indicator",
     [](std::string_view) { return Reason::tr("the digit of a block of text is one from 1 to 9"); }},
};

} // namespace

std::string explainYamlFault(std::string_view message, std::string_view line)
{
    const auto known = std::find_if(std::begin(explanations), std::end(explanations),
                                    [&](const auto& each) { return startsWith(message, each.message); });
    const std::string reason =
        known == std::end(explanations) ? std::string(message) : known->explain(message);
    for (const std::string_view mark : {"{{", "{%", "<%"}) {
        if (line.find(mark) < line.size())
            return Reason::tr("%1; a template is YAML only once it is filled in", {reason});
    }
    return reason;
}

} // namespace Repository::Documents
