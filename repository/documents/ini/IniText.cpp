#include "repository/documents/ini/IniText.h"

#include "host/FrameworkCore/Values/Utf8.h"
#include "host/FrameworkCore/Values/ValueText.h"
#include "repository/documents/common/KeyText.h"
#include "repository/documents/common/Refusal.h"
#include "repository/documents/common/SameValue.h"
#include "repository/documents/common/TypeMark.h"

#include <algorithm>
#include <vector>

namespace Repository::Documents {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

std::string_view withoutBackslash(std::string_view content)
{
    content.remove_suffix(1);
    return content;
}

std::string joinLines(std::string_view lines)
{
    const TextLine first = textLineAt(lines, 0);
    std::string joined;
    std::string_view pending = trimBlanks(first.content);
    for (std::size_t at = first.end; at < lines.size();) {
        const TextLine further = textLineAt(lines, at);
        at = further.end;
        if (isIniComment(further.content))
            continue;
        const std::string_view content = trimBlanks(further.content);
        if (!content.empty() && endsInBackslash(pending)) {
            const std::string_view before = withoutBackslash(pending);
            const bool indented = content.data() != further.content.data();
            joined += trimBlanks(before);
            if (indented || trimBlanks(before).size() < before.size())
                joined += ' ';
        } else {
            joined += pending;
            joined += '\n';
        }
        pending = content;
    }
    return joined.append(pending);
}

// The ways to write the value: the entry's own first, then those of others in the file.
std::vector<std::string> formsOf(const IniLine& entry, const Value& value, const IniStyle& style)
{
    std::vector<std::string> forms;
    const bool isMarked = entry.mark != Type::Group;
    const std::string text = value.type == Type::ByteArray && !isMarked
                                 ? std::get<std::string>(value.data)
                                 : FrameworkCore::Values::toText(value);
    const char own = quoteOf(entry);
    if (own != '\0' && value.type == Type::String)
        forms.push_back(own + text + own);
    forms.push_back(text);
    if (style.quote != '\0' && value.type == Type::String)
        forms.push_back(style.quote + text + style.quote);
    if (!style.continuation.empty() && text.find('\n') != std::string::npos) {
        const std::string lineBreak = style.lineEnd + style.continuation;
        std::string lines;
        for (const char c : text)
            lines += c == '\n' ? lineBreak : std::string(1, c);
        forms.push_back(std::move(lines));
    }
    if (isMarked) {
        // Some readers go on behind the end of the line until a quote is closed.
        const bool quoteFirst = text.find('"') != std::string::npos;
        forms.insert(quoteFirst ? forms.begin() : forms.end(), quoteMarkedText(text));
    }
    return forms;
}

// True where a value put into an empty place would stick to the separator though that has a blank before it.
bool lacksBlank(const IniLine& entry)
{
    return entry.separated && entry.value().empty() && !isBlank(entry.text[entry.valueBegin - 1]) &&
           entry.valueBegin > 1 && isBlank(entry.text[entry.valueBegin - 2]);
}

Value readPlainValue(const IniLine& entry)
{
    const std::string_view value = entry.value();
    if (entry.continued)
        return {Type::String, joinLines(value)};
    if (quoteOf(entry) != '\0')
        return {Type::String, std::string(value.substr(1, value.size() - 2))};
    return FrameworkCore::Values::plainValue(value);
}

bool holds(const std::string& text, const IniLine& before, const Value& value, IniComments comments)
{
    const std::optional<IniLine> now = scanSingle(text, comments);
    return now && now->kind == IniLine::Kind::Entry && now->indent == before.indent &&
           now->mark == before.mark && now->key() == before.key() &&
           trimBlanks(now->tail()) == trimBlanks(before.tail()) && isSame(readIniValue(*now), value);
}

} // namespace

bool isIniTooDeep(std::string_view sectionName)
{
    return std::count(sectionName.begin(), sectionName.end(), '.') >= deepestIniSection;
}

char quoteOf(const IniLine& entry)
{
    return entry.continued ? '\0' : quoteAround(entry.value());
}

Value readIniValue(const IniLine& entry)
{
    if (!entry.separated)
        return {Type::Null, {}};
    const std::string_view value = entry.value();
    if (!FrameworkCore::Values::isUtf8(value))
        return {Type::ByteArray, entry.continued ? joinLines(value) : std::string(value)};
    if (entry.mark == Type::Group)
        return readPlainValue(entry);
    const std::string spelled = entry.continued ? joinLines(value) : std::string(value);
    return readSpelledValue(entry.mark, spelled, readPlainValue(entry));
}

std::optional<std::string> writeIniValue(const IniLine& entry, const Value& value, const IniStyle& style)
{
    const std::string tail(entry.tail());
    if (value.type == Type::Null && entry.mark == Type::Group) {
        std::string text = std::string(entry.text.substr(0, entry.keyEnd)) + tail;
        if (!style.bareKeys || !holds(text, entry, value, style.comments))
            return std::nullopt;
        return text;
    }
    std::string head(entry.text.substr(0, entry.valueBegin));
    if (!entry.separated)
        head += style.separator;
    if (lacksBlank(entry) && value != Value{Type::String, std::string()})
        head += ' ';
    const std::vector<std::string> forms = formsOf(entry, value, style);
    // Behind a ":" some values need a blank to be told from what separates.
    for (const char* const blank : {"", " "}) {
        for (const std::string& form : forms) {
            std::string text = head + blank + form + tail;
            if (form.find('\0') == std::string::npos && holds(text, entry, value, style.comments))
                return text;
        }
        if (head.back() != ':')
            break;
    }
    return std::nullopt;
}

std::string explainIniRefusal(const Value& value, const IniStyle& style)
{
    const std::string kind(FrameworkCore::Values::describeType(value.type));
    const std::string text = FrameworkCore::Values::toText(value);
    if (!FrameworkCore::Values::isUtf8(text))
        return "the text holds half a character, which UTF-8 cannot hold";
    if (text.find('\0') != std::string::npos)
        return "the text holds a NUL character, which no text file has";
    switch (value.type) {
    case Type::Null:
        return "an ini entry has a value; this file has no keys without one";
    case Type::Bool:
    case Type::Integer:
    case Type::Unsigned:
    case Type::String:
        break;
    default:
        return "no mark above the entry says that it is " + kind + "; remove it and create it as " + kind;
    }
    if (text.find_first_of("\r\n") != std::string::npos)
        return "a value of this ini file ends with its line; the text has line breaks";
    const std::string plainLine = "k=" + text;
    const std::optional<IniLine> plain = scanSingle(plainLine, style.comments);
    const Value back = plain ? readIniValue(*plain) : Value();
    if (plain && back != value) {
        if (back.type != value.type) {
            return "an ini file would read " + quoted(text) + " back as " +
                   std::string(FrameworkCore::Values::describeType(back.type)) + ", not as " + kind;
        }
        return "an ini file would read " + quoted(text) + " back as " +
               quoted(FrameworkCore::Values::toText(back));
    }
    return "an ini file cannot hold " + quoted(text) + " at this place";
}

} // namespace Repository::Documents
