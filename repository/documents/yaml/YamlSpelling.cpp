#include "repository/documents/yaml/YamlSpelling.h"

#include "repository/documents/yaml/YamlScalar.h"
#include "repository/documents/yaml/YamlTokens.h"
#include "repository/documents/yaml/YamlTypes.h"

#include <algorithm>
#include <charconv>
#include <vector>

namespace Repository::Documents {

namespace {

constexpr auto npos = std::string_view::npos;

// What all readers print as it is.
bool isPrintable(std::string_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = utf8Length(text.substr(at));
        const char32_t code =
            length > 1 ? utf8CodePoint(text.substr(at, length)) : static_cast<unsigned char>(text[at]);
        const bool isLine = code == 0x85 || code == 0x2028 || code == 0x2029 || code == 0xFEFF;
        if (code < 0x20 || (code >= 0x7F && code < 0xA0) || isLine || code == 0xFFFE || code == 0xFFFF)
            return false;
        at += length;
    }
    return true;
}

std::string encodeDouble(std::string_view text)
{
    std::string spelled(1, '"');
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = utf8Length(text.substr(at));
        const std::string_view character = text.substr(at, length);
        const char32_t code = length > 1 ? utf8CodePoint(character) : static_cast<unsigned char>(text[at]);
        const std::size_t letter = std::string_view("\"\\\n\t\r").find(text[at]);
        if (letter != npos)
            (spelled += '\\') += "\"\\ntr"[letter];
        else if (isPrintable(character))
            spelled += character;
        else if (code < 0x100)
            appendHex(spelled += "\\x", code, 2, "0123456789ABCDEF");
        else
            appendHex(spelled += "\\u", code, 4, "0123456789ABCDEF");
        at += length;
    }
    return spelled += '"';
}

std::string encodeSingle(std::string_view text)
{
    std::string spelled(1, '\'');
    for (const char c : text)
        spelled.append(c == '\'' ? 2 : 1, c);
    return spelled += '\'';
}

// Whether a plain scalar is read as this text, whatever type it has then.
bool mayBePlain(std::string_view text, bool inFlow)
{
    constexpr std::string_view indicators = ",[]{}#&*!|>'\"%@`";
    if (text.empty() || !isPrintable(text) || text.front() == ' ' || text.back() == ' ' || text.back() == ':')
        return false;
    if (indicators.find(text[0]) != npos || startsWith(text, "---") || startsWith(text, "..."))
        return false;
    const bool isMark = text[0] == '-' || text[0] == '?' || text[0] == ':';
    if (isMark && (text.size() == 1 || text[1] == ' '))
        return false;
    if (inFlow && text.find_first_of(",[]{}:?", text[0] == '-' ? 1 : 0) != npos)
        return false;
    return text.find(": ") == npos && text.find(" #") == npos &&
           !(inFlow && text[0] == '-' && text.size() < 2);
}

std::string encodeQuoted(std::string_view text)
{
    return isPrintable(text) && text.find_first_of("\"\\") != npos ? encodeSingle(text) : encodeDouble(text);
}

bool isBlock(std::string_view spelled)
{
    return !spelled.empty() && (spelled[0] == '|' || spelled[0] == '>');
}

struct BlockText
{
    std::vector<std::string_view> lines; // up to the last that is not empty
    std::size_t ends = 0;                // of lines after that
};

BlockText splitBlock(std::string_view text)
{
    BlockText block;
    const std::size_t size = text.find_last_not_of('\n') + 1;
    block.ends = text.size() - size;
    for (std::size_t at = 0; at <= size;) {
        const std::size_t end = std::min(text.find('\n', at), size);
        block.lines.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return block;
}

bool isIndented(std::string_view line)
{
    return !line.empty() && isYamlBlank(line[0]);
}

// Nothing for a text that a block scalar cannot hold there.
std::optional<std::string> encodeBlock(std::string_view text, std::string_view former, const YamlPlace& place)
{
    const BlockText block = splitBlock(text);
    const auto isUnfit = [](std::string_view line) {
        const std::size_t last = line.find_last_not_of(" \t");
        return (last == npos && !line.empty()) || std::any_of(line.begin(), line.end(), [](char c) {
                   return static_cast<unsigned char>(c) < 0x20 && c != '\t';
               });
    };
    const bool isEmpty = block.lines.size() == 1 && block.lines[0].empty();
    if (isEmpty || std::any_of(block.lines.begin(), block.lines.end(), isUnfit))
        return {};
    std::string plain(text);
    std::replace(plain.begin(), plain.end(), '\t', ' ');
    std::replace(plain.begin(), plain.end(), '\n', ' ');
    const YamlBlockHeader header = isBlock(former) ? readYamlBlockHeader(former) : YamlBlockHeader();
    const bool keeps = block.ends > 1;
    if (!isPrintable(plain) || (keeps && (place.endsFile || (place.isBeforeBlank && header.chomping != '+'))))
        return {};
    const std::size_t formerIndentation =
        isBlock(former) ? indentationOfYamlBlock(former, header, place.indentation) : 0;
    const std::size_t own =
        formerIndentation > place.indentation ? formerIndentation : place.indentation + place.step;
    const auto first =
        std::find_if(block.lines.begin(), block.lines.end(), [](auto line) { return !line.empty(); });
    const bool isUnsettled = isBlock(former) && formerIndentation <= place.indentation && !place.mayBreak;
    const bool needsDigit = isIndented(*first) || header.digit > 0 || isUnsettled;
    if (needsDigit && own - place.indentation > 9)
        return {};
    std::string spelled = header.isFolded ? ">" : "|";
    if (needsDigit)
        spelled += std::to_string(own - place.indentation);
    spelled += block.ends == 0 ? "-" : keeps ? "+" : "";
    if (isBlock(former))
        spelled += former.substr(header.end, findYamlLineEnd(former, header.end) - header.end);
    std::string_view previous;
    for (std::size_t i = 0; i < block.lines.size(); ++i) {
        const std::string_view line = block.lines[i];
        const bool folds = header.isFolded && !line.empty() && !previous.empty() && !isIndented(line) &&
                           !isIndented(previous);
        if (folds)
            spelled += place.lineEnd;
        spelled += place.lineEnd;
        if (!line.empty())
            spelled.append(own, ' ') += line;
        previous = line.empty() ? previous : line;
    }
    for (std::size_t i = place.endsFile ? 0 : 1; i < block.ends; ++i)
        spelled += place.lineEnd;
    return decodeYamlScalar(spelled, place.indentation) == text ? std::optional(std::move(spelled))
                                                                : std::nullopt;
}

// Anything but a text, without a tag.
std::optional<std::string> spellPlain(const Value& value, std::string_view former)
{
    switch (value.type) {
    case Type::Null:
        return former == "~" ? "~" : "null";
    case Type::Bool: {
        std::string word = toText(value);
        const bool wasBool = readYamlPlain(former).type == Type::Bool;
        const std::size_t upper = wasBool && former[0] < 'a' ? (former[1] < 'a' ? word.size() : 1) : 0;
        std::transform(word.begin(), word.begin() + std::ptrdiff_t(upper), word.begin(),
                       [](char c) { return static_cast<char>(c - 'a' + 'A'); });
        return word;
    }
    case Type::Integer:
        return spellYamlInteger(std::get<std::int64_t>(value.data), former);
    case Type::Unsigned:
        return readYamlPlain(toText(value)).type == Type::Unsigned ? std::optional(toText(value))
                                                                   : std::nullopt;
    case Type::Double:
        return spellYamlDouble(std::get<double>(value.data), former);
    default:
        return {};
    }
}

} // namespace

std::string_view tagOfYamlScalar(std::string_view spelled)
{
    if (spelled.empty() || spelled[0] != '!')
        return {};
    const std::size_t end = std::min(spelled.find_first_of(" \t\r\n"), spelled.size());
    return spelled.substr(0, skipYamlTrivia(spelled, end));
}

std::string decodeYamlScalar(std::string_view spelled, std::size_t indentation)
{
    spelled.remove_prefix(tagOfYamlScalar(spelled).size());
    if (spelled.empty())
        return {};
    if (spelled[0] == '"' || spelled[0] == '\'')
        return decodeYamlQuoted(spelled);
    return isBlock(spelled) ? decodeYamlBlock(spelled, indentation) : decodeYamlPlain(spelled);
}

Value readYamlScalar(std::string_view spelled, std::size_t indentation)
{
    const std::string_view tag = tagOfYamlScalar(spelled);
    if (!tag.empty()) {
        const Type type = typeOfYamlTag(tag.substr(0, tag.find_first_of(" \t\r\n")));
        return readYamlTagged(type, decodeYamlScalar(spelled, indentation));
    }
    const char first = spelled.empty() ? 0 : spelled[0];
    if (first == '"' || first == '\'' || first == '|' || first == '>')
        return {Type::String, decodeYamlScalar(spelled, indentation)};
    return hasYamlBreak(spelled) ? Value{Type::String, decodeYamlPlain(spelled)} : readYamlPlain(spelled);
}

std::string_view commentOfYamlBlock(std::string_view spelled)
{
    spelled.remove_prefix(tagOfYamlScalar(spelled).size());
    if (!isBlock(spelled))
        return {};
    const std::string_view line = spelled.substr(0, findYamlLineEnd(spelled, 0));
    const std::size_t at = line.find('#');
    return at == npos ? std::string_view() : line.substr(at, line.find_last_not_of(" \t") + 1 - at);
}

std::string spellYamlText(std::string_view text, std::string_view former, const YamlPlace& place)
{
    const bool hasBreaks = text.find('\n') != npos;
    const bool wasBlock = isBlock(former);
    if (!place.inFlow && (wasBlock || (hasBreaks && place.mayBreak))) {
        if (auto block = encodeBlock(text, former, place))
            return *std::move(block);
    }
    const char quote = former.empty() ? 0 : former[0];
    if (quote == '"')
        return encodeDouble(text);
    if (quote == '\'')
        return isPrintable(text) ? encodeSingle(text) : encodeDouble(text);
    const bool staysNumber = isHugeYamlInteger(former) && isHugeYamlInteger(text);
    const bool isPlain = mayBePlain(text, place.inFlow) && (staysNumber || !isYamlKeyword(text));
    return isPlain ? std::string(text) : encodeQuoted(text);
}

std::string spellYamlKey(std::string_view key, std::string_view former, bool inFlow)
{
    const char quote = former.empty() ? 0 : former[0];
    if (quote == '"')
        return encodeDouble(key);
    if (quote == '\'')
        return isPrintable(key) ? encodeSingle(key) : encodeDouble(key);
    const auto beginsNumber = [](std::string_view text) {
        return text.find_first_of("+-.0123456789") == 0; // as a date of another reader does
    };
    const bool mayBeKeyword = !former.empty() && isYamlKeyword(former) && key != "<<" && former != "<<" &&
                              readYamlPlain(key).type == readYamlPlain(former).type &&
                              beginsNumber(key) == beginsNumber(former);
    const bool isPlain = mayBePlain(key, inFlow) && (mayBeKeyword || !isYamlKeyword(key));
    return isPlain ? std::string(key) : encodeQuoted(key);
}

std::optional<std::string> spellYamlValue(const Value& value, std::string_view former, const YamlPlace& place)
{
    const std::string_view tag = tagOfYamlScalar(former);
    const Type tagged =
        tag.empty() ? Type::Group : typeOfYamlTag(tag.substr(0, tag.find_first_of(" \t\r\n")));
    const bool keepsTag = tagged == value.type;
    std::string prefix(keepsTag ? tag : std::string_view());
    if (!prefix.empty() && !isYamlBlank(prefix.back()) && !isYamlBreak(prefix.back()))
        prefix += ' ';
    const std::string_view body = former.substr(tag.size());
    if (value.type == Type::String) {
        const auto& text = std::get<std::string>(value.data);
        return isUtf8(text) ? std::optional(prefix + spellYamlText(text, body, place)) : std::nullopt;
    }
    if (value.type == Type::ByteArray) {
        const std::string base64 = encodeBase64(std::get<std::string>(value.data));
        if (keepsTag && !body.empty() && std::string_view("\"'|>").find(body[0]) != npos)
            return prefix + spellYamlText(base64, body, place);
        return (keepsTag ? prefix : "!!binary ") + (base64.empty() ? "\"\"" : base64);
    }
    const auto plain = spellPlain(value, body);
    return plain ? std::optional(prefix + *plain) : std::nullopt;
}

std::optional<std::string> spellTaggedYamlValue(const Value& value, std::string_view former,
                                                const YamlPlace& place)
{
    const std::string text = toText(value);
    if (!isUtf8(text) || value.type == Type::String)
        return {};
    if (value.type == Type::Unsigned)
        return text;
    if (auto plain = spellYamlValue(value, former, place))
        return plain;
    const bool isQuoted = !former.empty() && (former[0] == '"' || former[0] == '\'');
    return spellYamlText(text, isQuoted ? former : std::string_view(), place);
}

} // namespace Repository::Documents
