#include "repository/documents/xml/XmlScanner.h"

#include "repository/documents/common/Values.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace Repository::Documents {

namespace {

// Comparing each attribute with all before it is not what a tag of thousands should do.
constexpr std::size_t mostAttributes = 40;

// What a byte may be without a second look.
enum Class : std::uint8_t { Blank = 1, NameStart = 2, NamePart = 4, Content = 8, Quoted = 16, Plain = 32 };

// NUL, which ends the text, is in no class.
constexpr auto classes = [] {
    std::array<std::uint8_t, 256> table{};
    for (unsigned c = ' '; c < 0x80; ++c)
        table[c] = Content | Quoted | Plain;
    for (const char c : {' ', '\t', '\r', '\n'})
        table[unsigned(c)] = Blank | Content | Quoted | Plain;
    for (unsigned c = 'a'; c <= 'z'; ++c)
        table[c] = table[c - 'a' + 'A'] = NameStart | NamePart | Content | Quoted | Plain;
    table[unsigned('_')] |= NameStart | NamePart;
    for (const char c : {'0', '1', '2', '3', '4', '5', '6', '7', '8', '9', '-', '.', ':'})
        table[unsigned(c)] |= NamePart;
    table[unsigned(']')] = Quoted | Plain;
    table[unsigned('"')] = table[unsigned('\'')] = Content | Plain;
    table[unsigned('<')] = table[unsigned('&')] = Plain;
    return table;
}();

bool is(char c, Class expected)
{
    return (classes[static_cast<unsigned char>(c)] & expected) != 0;
}

std::size_t after(Class expected, const std::string& text, std::size_t at)
{
    while (is(text[at], expected))
        ++at;
    return at;
}

} // namespace

XmlScanner::Event XmlScanner::next()
{
    if (closesItself) {
        position = at;
        return close();
    }
    if (at == 0 && !skipDeclaration())
        return Event::NotPlain;
    while (skipContent()) {
        position = at;
        if (at == text.size())
            return hasRoot && elements.empty() ? Event::End : Event::NotPlain;
        if (is(text[at + 1], NameStart))
            return readStartTag() ? Event::Open : Event::NotPlain;
        if (text[at + 1] == '/')
            return readEndTag() ? close() : Event::NotPlain;
        if (!skipMarkup())
            break;
    }
    return Event::NotPlain;
}

XmlScanner::Event XmlScanner::close()
{
    closesItself = false;
    elements.pop_back();
    return Event::Close;
}

// The usual ways of writing it.
bool XmlScanner::skipDeclaration()
{
    if (!skipOneOf({R"(<?xml version="1.0")", "<?xml version='1.0'"}))
        return true;
    skipOneOf({R"( encoding="UTF-8")", R"( encoding="utf-8")", " encoding='UTF-8'", " encoding='utf-8'"});
    skipOneOf({R"( standalone="yes")", R"( standalone="no")", " standalone='yes'", " standalone='no'"});
    skip(" ");
    return skip("?>");
}

// Up to the next tag or other markup, or to the end.
bool XmlScanner::skipContent()
{
    const bool isInside = !elements.empty();
    while (true) {
        at = after(isInside ? Content : Blank, text, at);
        if (text[at] == '<' || at == text.size())
            return true;
        if (!isInside)
            return false;
        if (text[at] == ']') {
            if (isAt("]]>"))
                return false;
            ++at;
        } else if (!(text[at] == '&' ? skipReference() : skipCharacter())) {
            return false;
        }
    }
}

bool XmlScanner::skipMarkup()
{
    if (skip("<!--"))
        return skipUpTo("--") && skip(">");
    if (skip("<?vantry "))
        return skipUpTo("?>");
    return !elements.empty() && skip("<![CDATA[") && skipUpTo("]]>");
}

// Over any characters.
bool XmlScanner::skipUpTo(std::string_view ending)
{
    const std::size_t end = text.find(ending, at);
    if (end == std::string::npos)
        return false;
    while (at < end) {
        if (is(text[at], Plain))
            ++at;
        else if (!skipCharacter())
            return false;
    }
    at = end + ending.size();
    return true;
}

bool XmlScanner::skipReference()
{
    ++at;
    if (text[at] != '#')
        return skipOneOf({"amp;", "lt;", "gt;", "quot;", "apos;"});
    ++at;
    const int base = text[at] == 'x' ? 16 : 10;
    at += base == 16 ? 1 : 0;
    std::uint32_t code = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data() + at, end, code, base);
    const bool isCharacter = (code >= ' ' && code < 0xD800) || code == '\t' || code == '\r' || code == '\n';
    if (read.ec != std::errc() || !isCharacter)
        return false;
    at = std::size_t(read.ptr - text.data());
    return skip(";");
}

// One that is not ASCII.
bool XmlScanner::skipCharacter()
{
    const std::size_t length = utf8Length(std::string_view(text).substr(at));
    if (length < 2 || isAt("\xEF\xBF\xBE") || isAt("\xEF\xBF\xBF"))
        return false;
    at += length;
    return true;
}

bool XmlScanner::skip(std::string_view literal)
{
    if (!isAt(literal))
        return false;
    at += literal.size();
    return true;
}

bool XmlScanner::skipOneOf(std::initializer_list<std::string_view> literals)
{
    return std::any_of(literals.begin(), literals.end(),
                       [this](std::string_view literal) { return skip(literal); });
}

bool XmlScanner::readStartTag()
{
    if (hasRoot && elements.empty())
        return false;
    hasRoot = true;
    ++at;
    const std::string_view name = readName();
    if (name.empty())
        return false;
    attributes.clear();
    while (true) {
        const std::size_t trivia = at;
        at = after(Blank, text, at);
        closesItself = text[at] == '/';
        if (closesItself || text[at] == '>')
            break;
        if (at == trivia || !readAttribute())
            return false;
    }
    elements.push_back(name);
    return skip(closesItself ? "/>" : ">");
}

bool XmlScanner::readAttribute()
{
    const std::string_view name = readName();
    const bool isKnown = std::find(attributes.begin(), attributes.end(), name) != attributes.end();
    if (name.empty() || isKnown || attributes.size() == mostAttributes)
        return false;
    attributes.push_back(name);
    at = after(Blank, text, at);
    if (!skip("="))
        return false;
    at = after(Blank, text, at);
    const char quote = text[at];
    if (quote != '"' && quote != '\'')
        return false;
    ++at;
    while (text[at = after(Quoted, text, at)] != quote) {
        const bool isOtherQuote = text[at] == '"' || text[at] == '\'';
        at += isOtherQuote ? 1 : 0;
        if (!isOtherQuote && !(text[at] == '&' ? skipReference() : skipCharacter()))
            return false;
    }
    ++at;
    return true;
}

// That of the element which is open.
bool XmlScanner::readEndTag()
{
    if (elements.empty() || !skip("</") || !skip(elements.back()))
        return false;
    at = after(Blank, text, at);
    return skip(">");
}

// Empty when there is none.
std::string_view XmlScanner::readName()
{
    const std::size_t begin = at;
    if (is(text[at], NameStart))
        at = after(NamePart, text, at);
    return std::string_view(text).substr(begin, at - begin);
}

} // namespace Repository::Documents
