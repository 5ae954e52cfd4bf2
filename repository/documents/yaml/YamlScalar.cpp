#include "repository/documents/yaml/YamlScalar.h"

#include "repository/documents/common/Values.h"
#include "repository/documents/yaml/YamlTokens.h"

#include <algorithm>
#include <vector>

namespace Repository::Documents {

namespace {

constexpr std::string_view escapeLetters = "0abt\tnvfre \"/\\NLP_";
constexpr char32_t escapedCodes[] = {0,    '\a', '\b', '\t', '\t', '\n', '\v',   '\f',   '\r',
                                     0x1B, ' ',  '"',  '/',  '\\', 0x85, 0x2028, 0x2029, 0xA0};

// One line break is a blank, and each empty line after it one.
void appendFolded(std::string& text, std::size_t breaks)
{
    if (breaks == 1)
        text += ' ';
    else
        text.append(breaks - 1, '\n');
}

// After the blanks and line ends at an offset; counts the line ends.
std::size_t skipBreaks(std::string_view text, std::size_t at, std::size_t& breaks)
{
    for (breaks = 0; at < text.size();) {
        if (isYamlBreak(text[at])) {
            at = skipYamlBreak(text, at);
            ++breaks;
        } else if (isYamlBlank(text[at])) {
            ++at;
        } else {
            break;
        }
    }
    return at;
}

std::size_t appendEscape(std::string& text, std::string_view spelled, std::size_t at)
{
    const char letter = spelled[at];
    const std::size_t digits = letter == 'x' ? 2 : letter == 'u' ? 4 : letter == 'U' ? 8 : 0;
    if (digits > 0) {
        char32_t code = 0;
        for (const char digit : spelled.substr(at + 1, digits))
            code = code * 16 + static_cast<char32_t>(digit <= '9' ? digit - '0' : (digit | 0x20) - 'a' + 10);
        appendUtf8(text, code);
        return at + 1 + digits;
    }
    const std::size_t index = escapeLetters.find(letter);
    if (index != std::string_view::npos)
        appendUtf8(text, escapedCodes[index]);
    return at + 1;
}

std::string decodeSingle(std::string_view body)
{
    std::string text;
    for (std::size_t at = 0; at < body.size();) {
        if (isYamlBreak(body[at])) {
            std::size_t breaks = 0;
            text.resize(text.find_last_not_of(" \t") + 1);
            at = skipBreaks(body, at, breaks);
            appendFolded(text, breaks);
            continue;
        }
        text += body[at];
        at += body[at] == '\'' ? 2 : 1;
    }
    return text;
}

std::string decodeDouble(std::string_view body)
{
    std::string text;
    std::size_t kept = 0; // up to here, blanks are escaped
    for (std::size_t at = 0; at < body.size();) {
        std::size_t breaks = 0;
        if (body[at] == '\\' && at + 1 < body.size() && isYamlBreak(body[at + 1])) {
            at = skipBreaks(body, skipYamlBreak(body, at + 1), breaks);
            text.append(breaks, '\n');
            kept = text.size();
        } else if (body[at] == '\\') {
            at = appendEscape(text, body, at + 1);
            kept = text.size();
        } else if (isYamlBreak(body[at])) {
            const std::size_t end = text.find_last_not_of(" \t") + 1;
            text.resize(std::max(end, kept));
            at = skipBreaks(body, at, breaks);
            appendFolded(text, breaks);
            kept = text.size();
        } else {
            text += body[at++];
        }
    }
    return text;
}

// The lines of a block scalar without their indentation.
std::vector<std::string_view> linesOf(std::string_view text, std::size_t indentation)
{
    std::vector<std::string_view> lines;
    for (std::size_t at = 0;; at = skipYamlLine(text, at)) {
        const std::size_t end = findYamlLineEnd(text, at);
        const std::string_view line = text.substr(at, end - at);
        const std::size_t blanks = std::min(line.find_first_not_of(' '), line.size());
        lines.push_back(line.substr(std::min(blanks, indentation)));
        if (end == text.size())
            return lines;
    }
}

bool isMoreIndented(std::string_view line)
{
    return !line.empty() && isYamlBlank(line.front());
}

std::string folded(const std::vector<std::string_view>& lines, std::size_t count)
{
    std::string text;
    std::size_t breaks = 0; // before the next line
    bool isFirst = true;
    bool wasIndented = false;
    for (std::size_t i = 0; i < count; ++i, ++breaks) {
        if (lines[i].empty())
            continue;
        const bool isIndented = isMoreIndented(lines[i]);
        if (isFirst || isIndented || wasIndented)
            text.append(breaks, '\n');
        else
            appendFolded(text, breaks);
        text += lines[i];
        isFirst = false;
        wasIndented = isIndented;
        breaks = 0;
    }
    return text;
}

} // namespace

std::string decodeYamlPlain(std::string_view spelled)
{
    if (!hasYamlBreak(spelled))
        return std::string(spelled);
    std::string text;
    for (std::size_t at = 0; at < spelled.size();) {
        const std::size_t end = findYamlLineEnd(spelled, at);
        const std::string_view line = spelled.substr(at, end - at);
        text += line.substr(0, line.find_last_not_of(" \t") + 1);
        std::size_t breaks = 0;
        at = skipBreaks(spelled, end, breaks);
        if (breaks > 0 && at < spelled.size())
            appendFolded(text, breaks);
    }
    return text;
}

std::string decodeYamlQuoted(std::string_view spelled)
{
    const std::string_view body = spelled.substr(1, spelled.size() - 2);
    const bool isEscaped = body.find(spelled[0] == '\'' ? '\'' : '\\') != std::string_view::npos;
    if (!isEscaped && !hasYamlBreak(body))
        return std::string(body);
    return spelled[0] == '\'' ? decodeSingle(body) : decodeDouble(body);
}

YamlBlockHeader readYamlBlockHeader(std::string_view spelled)
{
    YamlBlockHeader header;
    header.isFolded = spelled[0] == '>';
    for (header.end = 1; header.end < spelled.size(); ++header.end) {
        const char c = spelled[header.end];
        if (c == '-' || c == '+')
            header.chomping = c;
        else if (c >= '1' && c <= '9')
            header.digit = std::size_t(c - '0');
        else
            break;
    }
    header.lines = skipYamlLine(spelled, header.end);
    return header;
}

std::size_t indentationOfYamlBlock(std::string_view spelled, const YamlBlockHeader& header,
                                   std::size_t indentation)
{
    if (header.digit > 0)
        return indentation + header.digit;
    for (std::size_t at = header.lines; at < spelled.size(); at = skipYamlLine(spelled, at)) {
        const std::size_t end = findYamlLineEnd(spelled, at);
        const std::size_t text = std::min(spelled.find_first_not_of(' ', at), spelled.size());
        if (text < end)
            return text - at;
    }
    return 0;
}

std::string decodeYamlBlock(std::string_view spelled, std::size_t indentation)
{
    const YamlBlockHeader header = readYamlBlockHeader(spelled);
    if (findYamlLineEnd(spelled, header.end) == spelled.size())
        return {};
    const std::size_t own = indentationOfYamlBlock(spelled, header, indentation);
    const bool hasText =
        own > 0 || spelled.find_first_not_of(" \r\n", header.lines) != std::string_view::npos;
    const auto lines = linesOf(spelled.substr(header.lines), hasText ? own : std::string_view::npos);
    std::size_t count = lines.size();
    while (count > 0 && lines[count - 1].empty())
        --count;
    std::string text;
    if (header.isFolded) {
        text = folded(lines, count);
    } else {
        for (std::size_t i = 0; i < count; ++i)
            (text += i > 0 ? "\n" : "") += lines[i];
    }
    if (header.chomping == '+')
        text.append(lines.size() - count + (count > 0 ? 1 : 0), '\n');
    else if (header.chomping == 0 && count > 0)
        text += '\n';
    return text;
}

} // namespace Repository::Documents
