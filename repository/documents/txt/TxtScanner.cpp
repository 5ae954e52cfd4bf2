#include "repository/documents/txt/TxtScanner.h"

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/common/TypeTag.h"

#include <array>

namespace Repository::Documents {

namespace {

constexpr int mostWords = 3;

enum Trait : std::uint8_t {
    Plain = 1,       // is in a key as in a path
    Name = 2,        // is in a key, but not always in a path
    Beginning = 4,   // may begin a key
    Operating = 8,   // makes another operator of an "=" after it
    Punctuation = 16 // may have a backslash before it
};

constexpr bool isWordCharacter(int c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' ||
           c >= 0x80;
}

constexpr std::array<std::uint8_t, 256> findTraits()
{
    std::array<std::uint8_t, 256> traits{};
    for (int c = 0; c < 256; ++c) {
        int trait = 0;
        if (isWordCharacter(c))
            trait = Name | Beginning | (c < 0x80 ? Plain : 0);
        else if (c > ' ' && c < 0x7F)
            trait = Punctuation;
        for (const char plain : {'-', '/', '.', '$', '(', ')', '{', '}', '+', '~'})
            trait |= c == plain ? Plain | Name : 0;
        for (const char name : {'%', '*', '@', '[', ']'})
            trait |= c == name ? Name : 0;
        for (const char beginning : {'.', '/', '$', '*', '@', '%', '~'})
            trait |= c == beginning ? Beginning : 0;
        for (const char operating : {'+', '-', '*', '/', '%', '~'})
            trait |= c == operating ? Operating : 0;
        traits[std::size_t(c)] = std::uint8_t(trait);
    }
    traits['\\'] = Punctuation | Name;
    traits[' '] = traits['\t'] = Punctuation;
    return traits;
}

bool has(char c, Trait trait)
{
    static constexpr std::array<std::uint8_t, 256> traits = findTraits();
    return (traits[static_cast<unsigned char>(c)] & trait) != 0;
}

bool isComment(std::string_view content, std::size_t indent)
{
    return indent < content.size() && (content[indent] == '#' || content[indent] == '!');
}

struct Key
{
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t separator = 0;
    bool plain = false;
};

// Reads the key of one line, character by character.
class KeyReader
{
public:
    explicit KeyReader(std::string_view line) : content(line) {}

    std::optional<Key> read()
    {
        at = indentOf(content);
        if (at == content.size() || isComment(content, at))
            return std::nullopt;
        skipExport();
        key.begin = key.end = at;
        key.plain = true;
        const bool escaped =
            content[at] == '\\' && at + 1 < content.size() && has(content[at + 1], Punctuation);
        if (!escaped && !has(content[at], Beginning))
            return std::nullopt;
        key.plain = content[at] != '.';
        while (at < content.size() && content[at] != '=' && content[at] != ':') {
            if (!(isBlank(content[at]) ? takeBlanks() : takeCharacter()))
                return std::nullopt;
        }
        key.separator = at;
        if (at == content.size() || content[key.end - 1] == '.' || !isSeparator())
            return std::nullopt;
        return key;
    }

private:
    void skipExport()
    {
        constexpr std::string_view word = "export";
        if (content.substr(at, word.size()) != word)
            return;
        const std::string_view after = content.substr(at + word.size());
        const std::size_t blanks = indentOf(after);
        if (blanks > 0 && blanks < after.size() && after[blanks] != '=' && after[blanks] != ':')
            at += word.size() + blanks;
    }

    bool takeCharacter()
    {
        const char c = content[at];
        const bool escaped = c == '\\' && at + 1 < content.size() && has(content[at + 1], Punctuation);
        const bool doubled = c == '.' && at > key.begin && content[at - 1] == '.';
        if (doubled || !(escaped || has(c, Name)))
            return false;
        key.plain = key.plain && has(c, Plain);
        at += escaped ? 2 : 1;
        // What needs no more looking at, which is nearly all.
        while (at < content.size() && has(content[at], Plain) && content[at] != '.')
            ++at;
        key.end = at;
        return true;
    }

    // Between two words, or before the separator.
    bool takeBlanks()
    {
        const std::size_t blanks = indentOf(content.substr(at));
        const std::size_t after = at + blanks;
        if (after == content.size())
            return false;
        const char next = content[after];
        if (next != '=' && next != ':') {
            const bool inSentence = content[at - 1] == '.' || content[at] != ' ' || blanks > 1;
            if (inSentence || !(isWordCharacter(static_cast<unsigned char>(next)) || next == '\\') ||
                !isWordCharacter(static_cast<unsigned char>(content[key.begin])) || ++words > mostWords)
                return false;
        }
        at = after;
        return true;
    }

    bool isSeparator() const
    {
        const char after = at + 1 < content.size() ? content[at + 1] : '\0';
        if (content[at] == ':')
            return isBlank(after) && words == 1;
        if (after == '=' || after == '>')
            return false;
        if (at != key.end)
            return true;
        const bool escaped = at >= 2 && content[at - 2] == '\\';
        return words == 1 && (escaped || !has(content[at - 1], Operating));
    }

    std::string_view content;
    std::size_t at = 0;
    int words = 1;
    Key key;
};

bool goesOn(std::string_view content, std::string_view next, const Dialect& dialect)
{
    if (!endsInBackslash(content))
        return false;
    if (dialect.spelling)
        return true;
    if (isBlankLine(next))
        return false;
    if (indentOf(next) > 0 || (content.size() > 1 && isBlank(content[content.size() - 2])))
        return true;
    return !isComment(next, 0) && !KeyReader(next).read();
}

// Whether a key is a path as it is.
bool isPlainPath(std::string_view key)
{
    bool afterDot = true;
    for (const char c : key) {
        if (c == '.' ? afterDot : c == '\\' || !has(c, Plain))
            return false;
        afterDot = c == '.';
    }
    return !afterDot;
}

} // namespace

std::optional<Statement> TxtScanner::next()
{
    const std::size_t begin = position;
    std::size_t tagsBegin = begin; // of the tags that the line may have above it
    Type tag = Type::Group;
    while (position < text.size()) {
        const std::size_t lineBegin = position;
        if (std::optional<Statement> entry = takeEntry(tagsBegin, lineBegin, tag)) {
            if (tagsBegin == begin)
                return entry;
            position = tagsBegin;
            break;
        }
        const TextLine line = textLineAt(text, lineBegin);
        position = line.end;
        const std::optional<Type> read = readTypeTag(line.content);
        tag = read.value_or(Type::Group);
        // Of tags one above the other the last one holds; all of them go with the entry.
        if (!read)
            tagsBegin = position;
    }
    if (position == begin)
        return std::nullopt;
    Statement trivia;
    trivia.text = text.substr(begin, position - begin);
    return trivia;
}

std::optional<Statement> TxtScanner::takeEntry(std::size_t begin, std::size_t lineBegin, Type tag)
{
    std::optional<Statement> line = dialect.spelling ? takeSpelled(lineBegin) : takeGuessed(lineBegin);
    if (!line)
        return std::nullopt;
    line->tag = tag;
    line->shift(lineBegin - begin);
    line->text = text.substr(begin, position - begin);
    return line;
}

// With offsets from its line, as the next.
std::optional<Statement> TxtScanner::takeGuessed(std::size_t lineBegin)
{
    const TextLine first = textLineAt(text, lineBegin);
    const std::optional<Key> key = KeyReader(first.content).read();
    if (!key)
        return std::nullopt;
    Statement line;
    line.kind = Statement::Kind::Entry;
    line.plainKey = key->plain;
    line.keyBegin = std::uint32_t(key->begin);
    line.keyEnd = std::uint32_t(key->end);
    const std::string_view after = first.content.substr(key->separator + 1);
    line.valueBegin = std::uint32_t(key->separator + 1 + indentOf(after));
    line.valueEnd = std::uint32_t(line.valueBegin + trimBlanks(after).size());
    position = first.end;
    for (std::string_view content = first.content; position < text.size();) {
        const TextLine further = textLineAt(text, position);
        if (!goesOn(content, further.content, dialect))
            break;
        content = further.content;
        const std::string_view trimmed = trimBlanks(content);
        line.continued = true;
        line.valueEnd = std::uint32_t(std::size_t(trimmed.data() - text.data()) + trimmed.size() - lineBegin);
        position = further.end;
    }
    return line;
}

std::optional<Statement> TxtScanner::takeSpelled(std::size_t lineBegin)
{
    const TextLine first = textLineAt(text, lineBegin);
    const std::string_view content = first.content;
    if (isBlankLine(content) || isSkipped(content, dialect))
        return std::nullopt;
    const ValueExtent extent = measureValue(text.substr(lineBegin), dialect);
    const auto separates = [this](char c) { return dialect.separators.find(c) != std::string_view::npos; };
    Statement line;
    line.kind = Statement::Kind::Entry;
    line.continued = extent.continued;
    std::size_t at = indentOf(content);
    line.keyBegin = std::uint32_t(at);
    while (at < content.size() && !separates(content[at]) && !isBlank(content[at]))
        at += content[at] == '\\' ? 2 : 1;
    at = std::min(at, content.size());
    line.keyEnd = std::uint32_t(at);
    line.plainKey = isPlainPath(content.substr(line.keyBegin, at - line.keyBegin));
    at += indentOf(content.substr(at));
    if (at < content.size() && separates(content[at]))
        ++at;
    line.valueBegin = std::uint32_t(at + indentOf(content.substr(at)));
    line.valueEnd = std::uint32_t(std::max<std::size_t>(extent.end, line.valueBegin));
    position = lineBegin + extent.linesEnd;
    return line;
}

std::optional<Statement> scanTxtEntry(std::string_view text, const Dialect& dialect)
{
    TxtScanner scanner(text, dialect);
    std::optional<Statement> line = scanner.next();
    if (!line || !line->isEntry() || line->text.size() != text.size())
        return std::nullopt;
    return line;
}

bool wouldSwallow(const Statement& above, std::string_view below, const Dialect& dialect)
{
    std::string_view last = above.text;
    if (!last.empty() && endsLine(last))
        last.remove_suffix(last.size() > 1 && last.substr(last.size() - 2) == "\r\n" ? 2 : 1);
    last.remove_prefix(last.find_last_of("\r\n") + 1);
    return goesOn(last, textLineAt(below, 0).content, dialect);
}

std::string txtKeyPath(std::string_view key, const Dialect& dialect)
{
    if (dialect.spelling)
        return encodePath(dialect.spelling->readKey(key));
    std::string plain;
    plain.reserve(key.size());
    for (std::size_t at = 0; at < key.size(); ++at) {
        if (key[at] == '\\' && at + 1 < key.size() && has(key[at + 1], Punctuation))
            ++at;
        plain += key[at];
    }
    return encodePath(plain);
}

std::string escapeTxtKey(std::string_view path, const Dialect& dialect)
{
    if (dialect.spelling)
        return dialect.spelling->writeKey(decodePath(path));
    std::string key;
    for (std::size_t at = 0; at < path.size(); ++at) {
        const char c = path[at];
        const bool outer = at == 0 || at + 1 == path.size();
        const bool plain = isWordCharacter(static_cast<unsigned char>(c)) || c == '.' || c == '%' ||
                           (!outer && c != '\\' && has(c, Name));
        if (!plain)
            key += '\\';
        key += c;
    }
    return key;
}

} // namespace Repository::Documents
