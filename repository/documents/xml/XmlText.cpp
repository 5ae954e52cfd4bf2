#include "repository/documents/xml/XmlText.h"

#include "repository/documents/xml/XmlTypeTag.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view sectionBegin = "<![CDATA[";
constexpr std::string_view sectionEnd = "]]>";
constexpr std::size_t npos = std::string_view::npos;

bool beginsAt(std::string_view text, std::size_t at, std::string_view front)
{
    return text.compare(at, front.size(), front) == 0;
}

std::string reference(char32_t code)
{
    return "&#" + std::to_string(std::uint32_t(code)) + ';';
}

// After the comment, section or instruction that begins at an offset of a well-formed text.
std::size_t endOfMarkup(std::string_view text, std::size_t at)
{
    const std::string_view closing = beginsAt(text, at, "<!--")         ? "-->"
                                     : beginsAt(text, at, sectionBegin) ? sectionEnd
                                                                        : "?>";
    const std::size_t end = text.find(closing, at + (closing == "-->" ? 4 : 2));
    return end == npos ? text.size() : end + closing.size();
}

// Appends a text of the file with its line ends as xml gives them to readers.
void appendLines(std::string& out, std::string_view text)
{
    for (std::size_t at = text.find('\r'); at != npos; at = text.find('\r')) {
        out += text.substr(0, at);
        out += '\n';
        text.remove_prefix(at + (at + 1 < text.size() && text[at + 1] == '\n' ? 2 : 1));
    }
    out += text;
}

// Appends the text of the reference at an offset; gives the offset after it.
std::size_t appendReference(std::string& out, std::string_view text, std::size_t at,
                            const XmlEntities& entities)
{
    const std::size_t semicolon = std::min(text.find(';', at), text.size() - 1);
    const std::string_view reference = text.substr(at, semicolon + 1 - at);
    const auto expanded =
        entities.expand(reference.substr(1, std::max<std::size_t>(reference.size(), 2) - 2));
    out += expanded ? std::string_view(*expanded) : reference;
    return semicolon + 1;
}

} // namespace

bool isXmlBlank(std::string_view text)
{
    return text.find_first_not_of(blanks) == npos;
}

// The span with the blanks beside it.
static XmlSpan withBlanks(std::string_view between, XmlSpan span)
{
    if (span.isEmpty()) {
        const bool isText = isXmlBlank(between) && between.find_first_of("\r\n") == npos;
        return isText ? XmlSpan{0, between.size()} : span;
    }
    while (span.begin > 0 && isXmlBlank(between[span.begin - 1]))
        --span.begin;
    while (span.end < between.size() && isXmlBlank(between[span.end]))
        ++span.end;
    return span;
}

XmlSpan findXmlValue(std::string_view between, bool keepsBlanks)
{
    if (keepsBlanks)
        return withBlanks(between, findXmlValue(between));
    XmlSpan span;
    if (between.find('<') == npos) {
        span.end = between.size();
        while (span.begin < span.end && isXmlBlank(between[span.begin]))
            ++span.begin;
        while (span.begin < span.end && isXmlBlank(between[span.end - 1]))
            --span.end;
        return span.isEmpty() ? XmlSpan() : span;
    }
    std::size_t at = 0;
    while (at < between.size()) {
        const std::size_t markup = std::min(between.find('<', at), between.size());
        const std::string_view text = between.substr(at, markup - at);
        const std::size_t first = text.find_first_not_of(blanks);
        if (first != npos) {
            if (span.isEmpty())
                span.begin = at + first;
            span.end = at + text.find_last_not_of(blanks) + 1;
        }
        at = markup == between.size() ? markup : endOfMarkup(between, markup);
        if (markup < between.size() && beginsAt(between, markup, sectionBegin)) {
            if (span.isEmpty())
                span.begin = markup;
            span.end = at;
        }
    }
    return span;
}

std::string decodeXmlText(std::string_view spelling, const XmlEntities& entities)
{
    std::string text;
    text.reserve(spelling.size());
    for (std::size_t at = 0; at < spelling.size();) {
        const std::size_t special = std::min(spelling.find_first_of("&<", at), spelling.size());
        appendLines(text, spelling.substr(at, special - at));
        at = special;
        if (at < spelling.size() && spelling[at] == '&') {
            at = appendReference(text, spelling, at, entities);
        } else if (at < spelling.size()) {
            const std::size_t end = endOfMarkup(spelling, at);
            if (beginsAt(spelling, at, sectionBegin)) {
                const std::size_t inner = at + sectionBegin.size();
                appendLines(text, spelling.substr(inner, end - sectionEnd.size() - inner));
            }
            at = end;
        }
    }
    return text;
}

std::string decodeXmlAttribute(std::string_view spelling, const XmlEntities& entities)
{
    std::string text;
    text.reserve(spelling.size());
    for (std::size_t at = 0; at < spelling.size();) {
        const std::size_t reference = std::min(spelling.find('&', at), spelling.size());
        const std::size_t begin = text.size();
        appendLines(text, spelling.substr(at, reference - at));
        std::replace_if(
            text.begin() + std::ptrdiff_t(begin), text.end(), [](char c) { return isXmlBlank(c); }, ' ');
        at = reference == spelling.size() ? reference : appendReference(text, spelling, reference, entities);
    }
    return text;
}

std::string joinedXmlTokens(const std::string& text)
{
    std::string joined;
    for (const char c : text) {
        if (c != ' ' || (!joined.empty() && joined.back() != ' '))
            joined += c;
    }
    if (!joined.empty() && joined.back() == ' ')
        joined.pop_back();
    return joined;
}

bool isLiteralXml(std::string_view spelling)
{
    return spelling.find('&') == npos && spelling.find(sectionBegin) == npos;
}

bool isXmlSection(std::string_view spelling)
{
    std::size_t at = 0;
    while (at < spelling.size() && beginsAt(spelling, at, sectionBegin))
        at = endOfMarkup(spelling, at);
    return at > 0 && at == spelling.size();
}

std::string xmlCommentsIn(std::string_view between)
{
    std::string comments;
    for (std::size_t at = between.find('<'); at < between.size(); at = between.find('<', at)) {
        const std::size_t end = endOfMarkup(between, at);
        if (!beginsAt(between, at, sectionBegin) && !beginsAt(between, at, xmlTypeTagBegin))
            comments += between.substr(at, end - at);
        at = end;
    }
    return comments;
}

bool hasXmlComment(std::string_view text)
{
    for (std::size_t at = text.find('<'); at < text.size(); at = text.find('<', at)) {
        if (beginsAt(text, at, "<!--") || (beginsAt(text, at, "<?") && !beginsAt(text, at, xmlTypeTagBegin)))
            return true;
        at = beginsAt(text, at, sectionBegin) ? endOfMarkup(text, at) : at + 1;
    }
    return false;
}

std::vector<std::string_view> xmlReferencesIn(std::string_view spelling)
{
    std::vector<std::string_view> references;
    for (std::size_t at = spelling.find_first_of("&<"); at < spelling.size();
         at = spelling.find_first_of("&<", at)) {
        if (spelling[at] == '<') {
            at = endOfMarkup(spelling, at);
            continue;
        }
        const std::size_t end = std::min(spelling.find(';', at), spelling.size() - 1) + 1;
        references.push_back(spelling.substr(at, end - at));
        at = end;
    }
    return references;
}

std::string explainUnheldXml(std::string_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = utf8Length(text.substr(at));
        if (length == 0)
            return Reason::tr("xml cannot hold bytes that are not valid UTF-8");
        const char32_t c = utf8CodePoint(text.substr(at, length));
        const bool isControl = c < 0x20 && !isXmlBlank(text[at]);
        if (isControl || c == 0xFFFE || c == 0xFFFF) {
            std::string code;
            appendHex(code, c, 4, "0123456789ABCDEF");
            return Reason::tr("xml has no place for the character U+%1, not even in an escaped form", {code});
        }
        at += length;
    }
    return {};
}

bool XmlSpelling::canHold(std::string_view text) const
{
    const auto isPlain = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    return isAscii ? std::all_of(text.begin(), text.end(), isPlain) : encoding.findRefusal(text).empty();
}

// A character that needs no escape in its place; one that the encoding lacks becomes a reference.
void XmlSpelling::appendCharacter(std::string& spelling, std::string_view character) const
{
    const bool isCertain = character.size() == 1 && encoding.getKind() != TextEncoding::Kind::Declared;
    if (isCertain || canHold(character))
        spelling += character;
    else
        spelling += reference(utf8CodePoint(character));
}

// Escape gives what is spelled for the character at an offset; empty for the character itself.
template <typename Escape>
std::string XmlSpelling::spell(std::string_view text, std::size_t begin, std::size_t end,
                               const Escape& escape) const
{
    std::string spelling;
    spelling.reserve(end - begin);
    for (std::size_t at = begin; at < end;) {
        const std::size_t length = std::max<std::size_t>(utf8Length(text.substr(at)), 1);
        const std::string escaped = text[at] == '&' ? "&amp;" : text[at] == '<' ? "&lt;" : escape(at);
        if (escaped.empty())
            appendCharacter(spelling, text.substr(at, length));
        spelling += escaped;
        at += length;
    }
    return spelling;
}

std::string XmlSpelling::spellText(std::string_view text, std::size_t begin, std::size_t end,
                                   bool keepsBlanks) const
{
    const bool isLayout = !keepsBlanks || (isXmlBlank(text) && text.find_first_of("\r\n") != npos);
    return spell(text, begin, end, [&](std::size_t at) -> std::string {
        const bool atEdge = isLayout && (at == 0 || at + 1 == text.size());
        if (text[at] == '>' && at >= 2 && text.substr(at - 2, 2) == "]]")
            return "&gt;";
        if (text[at] == '\r' || (atEdge && isXmlBlank(text[at])))
            return reference(text[at]);
        return text[at] == '\n' ? lineEnd : std::string();
    });
}

std::string XmlSpelling::spellAttribute(std::string_view text, char quote) const
{
    return spell(text, 0, text.size(), [&](std::size_t at) -> std::string {
        if (text[at] == quote)
            return quote == '"' ? "&quot;" : "&apos;";
        return text[at] != ' ' && isXmlBlank(text[at]) ? reference(text[at]) : std::string();
    });
}

std::optional<std::string> XmlSpelling::spellSection(std::string_view text) const
{
    if (text.find('\r') != npos || !canHold(text))
        return std::nullopt;
    std::string spelling(sectionBegin);
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\n') {
            spelling += lineEnd;
            continue;
        }
        // The end of a section is cut in two, each half in a section of its own.
        if (text[at] == '>' && at >= 2 && text.substr(at - 2, 2) == "]]")
            (spelling += sectionEnd) += sectionBegin;
        spelling += text[at];
    }
    return spelling += sectionEnd;
}

std::optional<std::string> XmlSpelling::spellAttributeAsText(std::string_view text, char quote) const
{
    if (text.empty())
        return std::nullopt;
    const std::size_t first = std::max<std::size_t>(utf8Length(text), 1);
    return reference(utf8CodePoint(text.substr(0, first))) + spellAttribute(text.substr(first), quote);
}

} // namespace Repository::Documents
