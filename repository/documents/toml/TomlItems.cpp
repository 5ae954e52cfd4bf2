#include "repository/documents/toml/TomlItems.h"

#include "repository/documents/toml/TomlTokens.h"

namespace Repository::Documents {

namespace {

// After the member or value at an offset.
std::size_t skipItem(std::string_view text, std::size_t at, bool isMember)
{
    while (isMember) {
        const TomlKeyPart part = readTomlKeyPart(text, at);
        at = part.next;
        if (part.isLast) {
            at = skipTomlBlanks(text, at + 1);
            break;
        }
    }
    return skipTomlValue(text, at);
}

std::vector<BracketItems::Item> findItems(std::string_view text)
{
    const bool isTable = text[0] == '{';
    std::vector<BracketItems::Item> items;
    for (std::size_t at = skipTomlTrivia(text, 1); at + 1 < text.size();) {
        BracketItems::Item item{at, skipItem(text, at, isTable), std::string_view::npos};
        at = skipTomlTrivia(text, item.end);
        if (text[at] == ',') {
            item.comma = at;
            at = skipTomlTrivia(text, at + 1);
        }
        items.push_back(item);
    }
    return items;
}

} // namespace

TomlItems::TomlItems(std::string_view bracketed, std::string_view fileLineEnd)
    : BracketItems(bracketed, fileLineEnd, findItems(bracketed), bracketed[0] == '{')
{
}

} // namespace Repository::Documents
