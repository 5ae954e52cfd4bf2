#include "repository/documents/xml/XmlRespelling.h"

#include "repository/documents/common/Values.h"
#include "repository/documents/xml/XmlText.h"

#include <vector>

namespace Repository::Documents {

namespace {

// A character or a reference.
struct Token
{
    std::string_view spelled;
    std::string text;

    bool isReference() const { return spelled.front() == '&'; }
    bool isOfEntity() const
    {
        const bool isPlain = spelled == "&amp;" || spelled == "&lt;" || spelled == "&gt;" ||
                             spelled == "&quot;" || spelled == "&apos;";
        return isReference() && !isPlain && spelled[1] != '#';
    }
};

std::vector<Token> tokensOf(std::string_view spelled, const XmlEntities& entities)
{
    std::vector<Token> tokens;
    for (std::size_t at = 0; at < spelled.size();) {
        std::size_t end = at + std::max<std::size_t>(utf8Length(spelled.substr(at)), 1);
        if (spelled[at] == '&')
            end = std::min(spelled.find(';', at), spelled.size() - 1) + 1;
        else if (spelled.compare(at, 2, "\r\n") == 0)
            end = at + 2;
        const std::string_view token = spelled.substr(at, end - at);
        tokens.push_back({token, decodeXmlText(token, entities)});
        at = end;
    }
    return tokens;
}

bool mayBe(const Token& token, bool isEdge)
{
    return token.isReference() || !isEdge || !isXmlBlank(token.text);
}

} // namespace

std::optional<std::string> XmlRespelling::spell(std::string_view current, std::string_view text,
                                                bool trimsEdges) const
{
    if (current.find('&') == std::string_view::npos || current.find('<') != std::string_view::npos)
        return std::nullopt;
    const std::vector<Token> tokens = tokensOf(current, entities);
    std::size_t begin = 0; // of what is spelled anew
    std::size_t first = 0; // token that is not kept
    for (; first < tokens.size(); ++first) {
        const Token& token = tokens[first];
        const std::size_t end = begin + token.text.size();
        if (text.compare(begin, token.text.size(), token.text) != 0 ||
            !mayBe(token, trimsEdges && end == text.size()))
            break;
        begin = end;
    }
    std::size_t end = text.size();
    std::size_t last = tokens.size(); // after those that are not kept
    for (; last > first; --last) {
        const Token& token = tokens[last - 1];
        const std::size_t size = token.text.size();
        if (end - begin < size || text.compare(end - size, size, token.text) != 0 ||
            !mayBe(token, trimsEdges && end == size))
            break;
        end -= size;
    }
    const auto placeOf = [&](std::size_t token) {
        return token < tokens.size() ? std::size_t(tokens[token].spelled.data() - current.data())
                                     : current.size();
    };
    std::string front(current.substr(0, placeOf(first)));
    const std::string_view back = current.substr(placeOf(last));
    for (; first < last; ++first) {
        const Token& token = tokens[first];
        const std::size_t found =
            token.isOfEntity() && !token.text.empty() ? text.find(token.text, begin) : std::string_view::npos;
        if (found == std::string_view::npos || found + token.text.size() > end)
            continue;
        front += spellAnew(begin, found);
        front += token.spelled;
        begin = found + token.text.size();
    }
    return front.append(spellAnew(begin, end)).append(back);
}

} // namespace Repository::Documents
