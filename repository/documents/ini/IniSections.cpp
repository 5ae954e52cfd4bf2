#include "repository/documents/ini/IniSections.h"

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/TextLine.h"

namespace Repository::Documents {

namespace {

constexpr std::size_t none = std::string_view::npos;

// After a "]" in quotes, that of a subsection.
std::size_t findSubsectionEnd(std::string_view content, std::size_t begin)
{
    bool isQuoted = false;
    for (std::size_t at = begin; at < content.size(); ++at) {
        if (content[at] == '"')
            isQuoted = !isQuoted;
        else if (content[at] == '\\' && isQuoted)
            ++at;
        else if (content[at] == ']' && !isQuoted)
            return at;
    }
    return none;
}

std::size_t findChainEnd(std::string_view content, std::size_t begin)
{
    std::size_t close = content.find(']', begin);
    while (close != none && content.substr(close + 1, 1) == "[" && content.find(']', close + 1) != none)
        close = content.find(']', close + 1);
    return close;
}

// Names may hold brackets: the first "]" counts after which there are only blanks or a comment.
std::size_t findLastBracket(std::string_view content, std::size_t begin, const Dialect& dialect)
{
    for (std::size_t close = content.find(']', begin); close != none; close = content.find(']', close + 1)) {
        const std::string_view after = trimBlanks(content.substr(close + 1));
        if (after.empty() || isSkipped(after, dialect) || (dialect.hasBraces && after == "*"))
            return close;
    }
    return none;
}

std::string unescapeSubsection(std::string_view quotedName)
{
    std::string name;
    for (std::size_t at = 0; at < quotedName.size(); ++at) {
        if (quotedName[at] == '\\' && at + 1 < quotedName.size())
            ++at;
        name += quotedName[at];
    }
    return name;
}

// "[a "b.c"]", or "[a.b.c]" as older programs write it.
std::vector<SectionPart> subsectionParts(std::string_view name)
{
    const std::size_t quote = name.find('"');
    if (quote != none && name.back() == '"' && name.size() > quote + 1)
        return {{0, trimBlanks(name.substr(0, quote)).size()}, {quote, name.size()}};
    const std::size_t dot = name.find('.');
    if (dot == none)
        return {{0, name.size()}};
    return {{0, dot}, {dot + 1, name.size()}};
}

std::vector<SectionPart> chainParts(std::string_view name)
{
    std::vector<SectionPart> parts;
    for (std::size_t begin = 0; begin < name.size();) {
        const std::size_t end = std::min(name.find("][", begin), name.size());
        if (name.substr(begin) != "$i") // which is said of the section
            parts.push_back({begin, end});
        begin = end + 2;
    }
    return parts;
}

std::optional<std::string> chainName(std::string_view path, const Dialect& dialect)
{
    std::string name;
    for (const std::string_view component : splitPath(path).value_or(std::vector<std::string_view>())) {
        const std::optional<std::string> key = decodeKey(component);
        if (!key)
            return std::nullopt;
        if (!name.empty())
            name += "][";
        name += spellSectionPart(*key, dialect);
    }
    return name;
}

std::optional<std::string> subsectionName(std::string_view path)
{
    const PathEnds ends = splitLast(path);
    const std::optional<std::string> last = decodeKey(ends.last);
    const std::optional<std::string> first = decodeKey(ends.parent);
    if (ends.parent.empty() || !last || !first)
        return ends.parent.empty() ? last : std::nullopt;
    return *first + ' ' + quotedSubsection(*last);
}

std::string readPart(std::string_view text, const Dialect& dialect)
{
    if (dialect.sections == Dialect::Sections::Subsection && startsWith(text, "\""))
        return unescapeSubsection(text.substr(1, text.size() - 2));
    return dialect.spelling && dialect.spelling->readGroup ? dialect.spelling->readGroup(text)
                                                           : std::string(text);
}

} // namespace

std::size_t findSectionEnd(std::string_view content, std::size_t begin, const Dialect& dialect)
{
    switch (dialect.sections) {
    case Dialect::Sections::Subsection:
        return findSubsectionEnd(content, begin);
    case Dialect::Sections::Chain:
        return findChainEnd(content, begin);
    default:
        return findLastBracket(content, begin, dialect);
    }
}

std::vector<SectionPart> sectionParts(std::string_view name, const Dialect& dialect)
{
    switch (dialect.sections) {
    case Dialect::Sections::Subsection:
        return subsectionParts(name);
    case Dialect::Sections::Chain:
        return chainParts(name);
    default:
        return {{0, name.size()}};
    }
}

std::string sectionPath(std::string_view name, const Dialect& dialect)
{
    if (dialect.sections == Dialect::Sections::Nested)
        return encodePath(name);
    std::string path;
    for (const SectionPart& part : sectionParts(name, dialect))
        path = joinPath(path, encodeKey(readPart(name.substr(part.begin, part.end - part.begin), dialect)));
    return path;
}

std::string spellSectionPart(std::string_view name, const Dialect& dialect)
{
    return dialect.spelling && dialect.spelling->writeGroup ? dialect.spelling->writeGroup(name)
                                                            : std::string(name);
}

std::string quotedSubsection(std::string_view name)
{
    std::string quotedName(1, '"');
    for (const char c : name) {
        if (c == '"' || c == '\\')
            quotedName += '\\';
        quotedName += c;
    }
    return quotedName + '"';
}

std::optional<std::string> sectionName(std::string_view path, const Dialect& dialect)
{
    switch (dialect.sections) {
    case Dialect::Sections::Subsection:
        return subsectionName(path);
    case Dialect::Sections::Chain:
        return chainName(path, dialect);
    case Dialect::Sections::Flat:
        return decodeKey(path);
    default:
        return decodePath(path);
    }
}

} // namespace Repository::Documents
