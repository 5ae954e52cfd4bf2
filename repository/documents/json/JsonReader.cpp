#include "repository/documents/json/JsonReader.h"

#include "repository/documents/json/JsonScalar.h"
#include "repository/documents/json/JsonTrivia.h"

#include <algorithm>
#include <new>
#include <simdjson.h>

namespace Repository::Documents {

namespace {

using simdjson::ondemand::json_iterator;

constexpr auto npos = std::string_view::npos;

// The token at an offset as a person names it.
std::string describe(std::string_view text, std::size_t at)
{
    constexpr std::size_t shownLength = 20;
    if (text[at] == '"')
        return Reason::tr("a text");
    const std::size_t end = std::min(text.find_first_of(" \t\r\n,:[]{}\"", at + 1), at + shownLength);
    std::string_view word = text.substr(at, std::string_view("[]{},:").find(text[at]) == npos ? end - at : 1);
    while (!isUtf8(word))
        word.remove_suffix(1);
    if (!word.empty() && static_cast<unsigned char>(word[0]) < 0x20)
        return Reason::tr("a control character");
    return quoted(word);
}

// Only blanks are between two tokens.
std::size_t endOfToken(std::string_view text, std::size_t nextToken)
{
    std::size_t end = nextToken;
    while (text[end - 1] == ' ' || text[end - 1] == '\n' || text[end - 1] == '\t' || text[end - 1] == '\r')
        --end;
    return end;
}

// A text with a byte-order mark of UTF-16, or with a zero in the same half of its first two units.
bool isUtf16(std::string_view text)
{
    const auto isZero = [text](std::size_t at) { return at < text.size() && text[at] == '\0'; };
    return startsWith(text, "\xFF\xFE") || startsWith(text, "\xFE\xFF") || (isZero(0) && isZero(2)) ||
           (isZero(1) && isZero(3));
}

// At least as many as there are values: growing step by step would take twice the memory.
std::size_t countValues(const json_iterator& begin)
{
    std::size_t count = 1;
    for (json_iterator tokens(begin); !tokens.at_end();) {
        const std::uint8_t token = *tokens.return_current_and_advance();
        count += token == ',' || token == '[' || token == '{' ? 1 : 0;
    }
    return count;
}

// A copy of equal length with comments blanked; empty when there are none. An unclosed comment stays, and is
// then found not to be a value.
std::string blankComments(const std::string& text, std::size_t at = 0)
{
    std::string copy;
    while ((at = text.find_first_of("\"/", at)) != std::string::npos) {
        if (text[at] == '"') {
            at = std::min(findStringEnd(text, at), text.size());
            continue;
        }
        const std::size_t end = skipComment(text, at);
        if (end == npos || end == at) {
            at = end == at ? at + 1 : text.size();
            continue;
        }
        if (copy.empty()) {
            copy.reserve(text.size() + simdjson::SIMDJSON_PADDING);
            copy = text;
        }
        std::fill(copy.begin() + std::ptrdiff_t(at), copy.begin() + std::ptrdiff_t(end), ' ');
        at = end;
    }
    return copy;
}

} // namespace

Outcome JsonReader::read()
{
    const std::string& original = tree.getOriginal();
    if (original.size() > maximumSize)
        return outcomeAt(original, 0, Reason::tr("the file is larger than the 4 GB that can be opened"));
    const std::size_t start = startsWith(original, utf8ByteOrderMark) ? utf8ByteOrderMark.size() : 0;
    if (scan(original, start))
        return {};
    if (isUtf16(original))
        return outcomeAt(original, 0,
                         Reason::tr("the file is encoded as UTF-16, but json is UTF-8: save it as UTF-8"));
    const std::string blanked = blankComments(original);
    if (!blanked.empty()) {
        tree.dropNodes();
        members.dropAll();
        if (scan(blanked, start))
            return {};
    }
    return outcomeAt(original, faultOffset, fault);
}

bool JsonReader::readInto(NodeId scalar, std::size_t start)
{
    const std::string& text = tree.getOriginal();
    if (start >= text.size() || (text[start] != '{' && text[start] != '['))
        return false;
    top = scalar;
    // A comment in it would end the reading, which leaves nodes that are half read.
    const std::string blanked = blankComments(text, start);
    return scan(blanked.empty() ? text : blanked, start);
}

bool JsonReader::scan(const std::string& text, std::size_t start)
{
    expected = Expected::Value;
    current = latest = noNode;
    depth = leading = 0;

    if (text.size() == start)
        return true;
    const simdjson::padded_string_view padded(text.data() + start, text.size() - start,
                                              text.capacity() - start);
    simdjson::ondemand::parser parser;
    json_iterator tokens;
    const simdjson::error_code error = parser.iterate_raw(padded).get(tokens);
    if (error == simdjson::EMPTY)
        return true;
    if (error == simdjson::UTF8_ERROR)
        return failEncoding(text);
    if (error == simdjson::UNCLOSED_STRING || error == simdjson::UNESCAPED_CHARS)
        return failString(text);
    if (error == simdjson::MEMALLOC)
        throw std::bad_alloc();
    if (error != simdjson::SUCCESS)
        return fail(0, Reason::tr("the json parser gave up: %1", {simdjson::error_message(error)}));

    const std::size_t values = countValues(tokens);
    tree.reserveMore(values + values / 16); // some room for edits
    const auto offsetOf = [&text](const std::uint8_t* token) {
        return static_cast<std::size_t>(reinterpret_cast<const char*>(token) - text.data());
    };
    while (!tokens.at_end()) {
        const std::size_t at = offsetOf(tokens.return_current_and_advance());
        if (!take(text, at, tokens.at_end() ? text.size() : offsetOf(tokens.peek())))
            return false;
    }
    if (expected != Expected::Nothing)
        return failUnexpected(text, text.size());
    tree.node(latest).end = std::uint32_t(text.size());
    return true;
}

bool JsonReader::take(std::string_view text, std::size_t at, std::size_t nextToken)
{
    switch (expected) {
    case Expected::Member:
        return text[at] == '}' ? close(at) : takeKey(text, at, nextToken);
    case Expected::Colon:
        if (text[at] != ':')
            return failUnexpected(text, at);
        expected = Expected::Value;
        return true;
    case Expected::Element:
        return text[at] == ']' ? close(at) : takeValue(text, at, nextToken);
    case Expected::Value:
        return takeValue(text, at, nextToken);
    case Expected::Separator:
        return takeSeparator(text, at);
    case Expected::Nothing:
        break;
    }
    return failUnexpected(text, at);
}

bool JsonReader::takeKey(std::string_view text, std::size_t at, std::size_t nextToken)
{
    if (text[at] != '"')
        return failUnexpected(text, at);
    label = at;
    expected = Expected::Colon;
    return checkEscapes(text, at, endOfToken(text, nextToken));
}

bool JsonReader::takeValue(std::string_view text, std::size_t at, std::size_t nextToken)
{
    switch (text[at]) {
    case '{':
        return open(JsonKind::Object, at);
    case '[':
        return open(JsonKind::Array, at);
    case '"': {
        const std::size_t end = endOfToken(text, nextToken);
        return checkEscapes(text, at, end) && addScalar(JsonKind::Text, at, end);
    }
    case '}':
    case ']':
    case ',':
    case ':':
        return failUnexpected(text, at);
    default:
        return takeWord(text, at, nextToken);
    }
}

bool JsonReader::takeWord(std::string_view text, std::size_t at, std::size_t nextToken)
{
    const std::size_t end = endOfToken(text, nextToken);
    const std::string_view word = text.substr(at, end - at);
    if (word == "true")
        return addScalar(JsonKind::True, at, end);
    if (word == "false")
        return addScalar(JsonKind::False, at, end);
    if (word == "null")
        return addScalar(JsonKind::Null, at, end);
    if (isNumber(word))
        return addScalar(JsonKind::Number, at, end);
    if (const std::size_t quote = word.find('"'); quote != npos) {
        expected = current == noNode ? Expected::Nothing : Expected::Separator;
        return failUnexpected(text, at + quote);
    }
    if (std::string_view("+-.0123456789").find(word[0]) != npos)
        return fail(at, Reason::tr("%1 is not a number in json", {describe(text, at)}));
    if (static_cast<unsigned char>(word[0]) < 0x20 || word[0] == '/')
        return failUnexpected(text, at);
    return fail(at, Reason::tr("found %1 where %2 was expected: texts are in double quotes, and the only "
                               "words are true, false and null",
                               {describe(text, at), expectation()}));
}

bool JsonReader::takeSeparator(std::string_view text, std::size_t at)
{
    const char closing = inObject() ? '}' : ']';
    if (text[at] != ',' && text[at] != closing)
        return failUnexpected(text, at);
    tree.node(latest).end = std::uint32_t(at);
    if (text[at] == closing)
        return close(at);
    leading = at + 1;
    expected = inObject() ? Expected::Member : Expected::Element;
    return true;
}

bool JsonReader::checkEscapes(std::string_view text, std::size_t at, std::size_t end)
{
    const std::size_t bad = findBadEscape(text.substr(at, end - at));
    return bad == npos || fail(at + bad, Reason::tr("%1 begins no escape that json allows",
                                                    {quoted(text.substr(at + bad, 2))}));
}

bool JsonReader::open(JsonKind kind, std::size_t at)
{
    if (++depth > maximumDepth)
        return fail(
            at, Reason::tr("more than %1 objects and arrays lie within each other here, which is too deep",
                           {std::to_string(maximumDepth)}));
    if (current == noNode && top != noNode)
        tree.reopen(current = top, kind, at);
    else
        current = tree.read(newNode(kind, at));
    leading = at + 1;
    expected = inObject() ? Expected::Member : Expected::Element;
    return true;
}

bool JsonReader::close(std::size_t at)
{
    JsonNode& node = tree.node(current);
    const bool afterValue = expected == Expected::Separator;
    node.trailingComma = !afterValue && node.count > 0;
    node.closing = std::uint32_t(afterValue ? at : leading);
    node.valueEnd = std::uint32_t(at + 1);
    if (node.isList())
        tree.fold(current);
    else
        members.addAll(current);
    --depth;
    latest = current;
    current = latest == top ? noNode : tree.node(latest).parent;
    expected = current == noNode ? Expected::Nothing : Expected::Separator;
    return true;
}

bool JsonReader::addScalar(JsonKind kind, std::size_t at, std::size_t end)
{
    JsonNode node = newNode(kind, at);
    node.valueEnd = std::uint32_t(end);
    latest = tree.read(node);
    expected = current == noNode ? Expected::Nothing : Expected::Separator;
    return true;
}

JsonNode JsonReader::newNode(JsonKind kind, std::size_t at) const
{
    JsonNode node;
    node.kind = kind;
    node.parent = current;
    node.leading = std::uint32_t(leading);
    node.label = std::uint32_t(current != noNode && inObject() ? label : at);
    node.value = std::uint32_t(at);
    return node;
}

bool JsonReader::inObject() const
{
    return tree.node(current).kind == JsonKind::Object;
}

bool JsonReader::fail(std::size_t at, std::string message)
{
    faultOffset = at;
    fault = std::move(message);
    return false;
}

bool JsonReader::failEncoding(std::string_view text)
{
    std::size_t at = 0;
    while (const std::size_t length = utf8Length(text.substr(at)))
        at += length;
    return fail(at, Reason::tr("the bytes from here are not UTF-8, the encoding of json"));
}

// A text without a closing quote, or with a character that must be written as an escape.
bool JsonReader::failString(std::string_view text)
{
    for (std::size_t quote = text.find('"'); quote != npos;) {
        const std::size_t end = std::min(findStringEnd(text, quote), text.size());
        const std::string_view literal = text.substr(quote, end - quote);
        const auto control = std::find_if(literal.begin(), literal.end(),
                                          [](char c) { return static_cast<unsigned char>(c) < 0x20; });
        if (control != literal.end() && *control != '\n' && *control != '\r')
            return fail(
                quote + std::size_t(control - literal.begin()),
                Reason::tr(
                    "a text holds a control character, which must be written as an escape such as \"\\t\""));
        if (control != literal.end() || literal.size() == 1 || literal.back() != '"')
            return fail(quote, Reason::tr("the text that begins here has no closing quote on its line"));
        quote = text.find('"', end);
    }
    return fail(text.size(), Reason::tr("the file ends within a text"));
}

bool JsonReader::failUnexpected(std::string_view text, std::size_t at)
{
    if (at >= text.size())
        return fail(at, Reason::tr("the file ends where %1 was expected", {expectation()}));
    if (text.substr(at, 2) == "/*")
        return fail(at, Reason::tr("the comment that begins here has no end"));
    return fail(at, Reason::tr("found %1 where %2 was expected", {describe(text, at), expectation()}));
}

std::string JsonReader::expectation() const
{
    switch (expected) {
    case Expected::Element:
        return Reason::tr("a value or \"]\"");
    case Expected::Member:
        return Reason::tr("a key in double quotes or \"}\"");
    case Expected::Colon:
        return Reason::tr("\":\" after the key");
    case Expected::Separator:
        return inObject() ? Reason::tr("\",\" or \"}\"") : Reason::tr("\",\" or \"]\"");
    case Expected::Nothing:
        return Reason::tr("the end of the file");
    case Expected::Value:
        break;
    }
    return Reason::tr("a value");
}

} // namespace Repository::Documents
