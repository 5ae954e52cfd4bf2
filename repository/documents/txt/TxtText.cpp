#include "repository/documents/txt/TxtText.h"

#include "host/FrameworkCore/Values/Utf8.h"
#include "host/FrameworkCore/Values/ValueText.h"
#include "repository/documents/common/Refusal.h"
#include "repository/documents/common/SameValue.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/common/TypeMark.h"

#include <vector>

namespace Repository::Documents {

using FrameworkCore::Values::describeType;
using FrameworkCore::Values::isUtf8;
using FrameworkCore::Values::toText;
using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

std::string joinLines(std::string_view lines)
{
    std::string joined;
    for (std::size_t at = 0; at < lines.size();) {
        const TextLine line = textLineAt(lines, at);
        at = line.end;
        std::string_view content = trimBlanks(line.content);
        if (at < lines.size())
            content.remove_suffix(1); // the backslash
        const std::string_view trimmed = trimBlanks(content);
        joined += trimmed;
        if (at < lines.size() && (trimmed.size() < content.size() || isBlank(lines[at])))
            joined += ' ';
    }
    return joined;
}

Value readPlain(const TxtLine& entry)
{
    const std::string_view value = entry.value();
    if (entry.continued)
        return {Type::String, joinLines(value)};
    if (quoteAround(value) != '\0')
        return {Type::String, std::string(value.substr(1, value.size() - 2))};
    return FrameworkCore::Values::plainValue(value);
}

// The ways to write the value: the entry's own first, then that of others in the file.
std::vector<std::string> formsOf(const TxtLine& entry, const Value& value, const TxtStyle& style)
{
    std::vector<std::string> forms;
    const bool isText = value.type == Type::String;
    const std::string text = entry.mark == Type::Group && value.type == Type::ByteArray
                                 ? std::get<std::string>(value.data)
                                 : toText(value);
    const char own = entry.continued ? '\0' : quoteAround(entry.value());
    if (own != '\0' && isText)
        forms.push_back(own + text + own);
    forms.push_back(text);
    if (style.quote != '\0' && isText)
        forms.push_back(style.quote + text + style.quote);
    if (entry.mark != Type::Group)
        forms.push_back(quoteMarkedText(text));
    return forms;
}

// True where a value put into an empty place would stick to the separator though that has a blank before it.
bool lacksBlank(const TxtLine& entry)
{
    return entry.value().empty() && !isBlank(entry.text[entry.valueBegin - 1]) &&
           isBlank(entry.text[entry.valueBegin - 2]);
}

bool holds(const std::string& text, const TxtLine& before, const Value& value)
{
    if (text.find('\0') != std::string::npos)
        return false;
    const std::optional<TxtLine> now = scanTxtEntry(text);
    return now && now->begin == before.begin && now->mark == before.mark && now->key() == before.key() &&
           trimBlanks(now->tail()) == trimBlanks(before.tail()) && isSame(readTxtValue(*now), value);
}

} // namespace

Value readTxtValue(const TxtLine& entry)
{
    if (!isUtf8(entry.value()))
        return {Type::ByteArray, entry.continued ? joinLines(entry.value()) : std::string(entry.value())};
    if (entry.mark == Type::Group)
        return readPlain(entry);
    const std::string spelled = entry.continued ? joinLines(entry.value()) : std::string(entry.value());
    return readSpelledValue(entry.mark, spelled, readPlain(entry));
}

std::optional<std::string> writeTxtValue(const TxtLine& entry, const Value& value, const TxtStyle& style)
{
    const std::string tail(entry.tail());
    std::string head(entry.text.substr(0, entry.valueBegin));
    if (lacksBlank(entry) && !toText(value).empty())
        head += ' ';
    const std::vector<std::string> forms = formsOf(entry, value, style);
    std::optional<std::string> onlyAtEnd;
    // Behind "=" some values need a blank to be told from an operator.
    for (const char* const blank : {"", " "}) {
        for (const std::string& form : forms) {
            std::string text = head + blank + form + tail;
            if (!holds(text, entry, value))
                continue;
            if (!goesOnBelow(text))
                return text;
            if (!onlyAtEnd)
                onlyAtEnd = std::move(text);
        }
        if (isBlank(head.back()))
            break;
    }
    return onlyAtEnd;
}

bool goesOnBelow(std::string_view text)
{
    const std::optional<TxtLine> entry = scanTxtEntry(text);
    return entry && wouldSwallow(*entry, std::string(entry->indent()) + "key = 1");
}

std::string explainTxtRefusal(const TxtLine& entry, const Value& value)
{
    const std::string text = toText(value);
    if (value.type == Type::String && !isUtf8(text))
        return "the text holds half a character, which UTF-8 cannot hold";
    if (text.find_first_of("\r\n") != std::string::npos)
        return "a value of a txt file ends with its line; the text has line breaks";
    if (text.find('\0') != std::string::npos)
        return "the text holds a NUL character, which no text file has";
    if (value.type == Type::ByteArray)
        return "a txt file would read these bytes back as a text, or cut them";
    std::string line(entry.text.substr(0, entry.valueBegin));
    line += ' ' + text;
    const std::optional<TxtLine> plain = scanTxtEntry(line);
    const Value back = plain ? readTxtValue(*plain) : Value();
    const std::string kind(describeType(value.type));
    if (plain && back.type != value.type)
        return "a txt file would read " + quoted(text) + " back as " + std::string(describeType(back.type)) +
               ", not as " + kind;
    if (plain && back != value)
        return "a txt file would read " + quoted(text) + " back as " + quoted(toText(back));
    return "a txt file cannot hold " + quoted(text) + " at this place";
}

} // namespace Repository::Documents
