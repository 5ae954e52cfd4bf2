#include "repository/documents/common/LineDialect.h"

#include "repository/documents/common/Document.h"
#include "repository/documents/common/EndComments.h"
#include "repository/documents/common/Latin1.h"
#include "repository/documents/common/NumberStyle.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/common/TypeTag.h"

namespace Repository::Documents {

namespace {

char quoteOf(const Statement& entry)
{
    return entry.continued ? '\0' : quoteAround(entry.value());
}

// True where a value put into an empty place would stick to the separator though that has a blank before it.
bool lacksBlank(const Statement& entry)
{
    const bool isEmptyLine = entry.value().empty() || isLineEnd(entry.value().front());
    return entry.isSeparated() && isEmptyLine && !isBlank(entry.text[entry.valueBegin - 1]) &&
           entry.valueBegin > 1 && isBlank(entry.text[entry.valueBegin - 2]);
}

Value bareValue(Dialect::BareKeys meaning)
{
    switch (meaning) {
    case Dialect::BareKeys::True:
        return {Type::Bool, true};
    case Dialect::BareKeys::Empty:
        return {Type::String, std::string()};
    default:
        return {Type::Null, {}};
    }
}

bool writesLatin1(const Statement& entry, const LineStyle& style)
{
    return style.isLatin1 || !isUtf8(entry.value());
}

// Those of the spellings that the character set has.
std::vector<std::string> inLatin1(const std::vector<std::string>& forms)
{
    std::vector<std::string> held;
    for (const std::string& form : forms) {
        if (auto bytes = toLatin1(form))
            held.push_back(std::move(*bytes));
    }
    return held;
}

bool hasLines(const std::string& text, const LineStyle& style)
{
    return !style.continuation.empty() && text.find('\n') != std::string::npos;
}

std::string replaceLineFeeds(const std::string& text, const std::string& lineBreak)
{
    std::string lines;
    for (const char c : text)
        lines += c == '\n' ? lineBreak : std::string(1, c);
    return lines;
}

} // namespace

void LineStyle::learn(const Statement& entry)
{
    bareKeys = bareKeys || !entry.isSeparated();
    if (!entry.isSeparated())
        return;
    if (!isKnown && !entry.value().empty() && !trimBlanks(entry.separator()).empty()) {
        isKnown = true;
        separator = plainSeparator(entry.separator());
        indent = entry.indent();
    }
    if (quote == '\0')
        quote = quoteOf(entry);
}

bool LineDialect::isComment(std::string_view content) const
{
    const std::size_t indent = indentOf(content);
    return indent < content.size() && dialect.comments.find(content[indent]) != std::string_view::npos;
}

std::size_t LineDialect::findSectionEnd(std::string_view trivia, bool hasHeaderBelow) const
{
    return findEndComments(trivia, dialect.comments, hasHeaderBelow);
}

std::string_view LineDialect::commentAfter(const Statement& line) const
{
    std::string_view after = line.text.substr(line.isEntry() ? line.valueEnd : line.keyEnd);
    if (line.isHeader() && startsWith(after, "]"))
        after.remove_prefix(1);
    after = textLineAt(after, 0).content;
    return isComment(after) ? after : std::string_view();
}

std::string LineDialect::explainLength(std::string_view text) const
{
    for (std::size_t at = 0; dialect.longestLine > 0 && at < text.size();) {
        const TextLine line = textLineAt(text, at);
        if (line.content.size() > dialect.longestLine)
            return Reason::tr("%1 is read in lines of %2 bytes at most",
                              {fileNoun(), std::to_string(dialect.longestLine)});
        at = line.end;
    }
    return {};
}

char LineDialect::commentSign() const
{
    constexpr char usual = '#';
    return dialect.comments.find(usual) == std::string_view::npos ? dialect.comments.front() : usual;
}

Value LineDialect::read(const Statement& entry) const
{
    if (!entry.isSeparated())
        return bareValue(dialect.bareKeys);
    if (!isUtf8(entry.value())) {
        const std::optional<std::string> text = fromLatin1(entry.value());
        return text ? readAs(entry, *text) : Value{Type::ByteArray, spelledText(entry)};
    }
    if (dialect.spelling)
        return readSpelling(entry);
    if (entry.tag == Type::Group)
        return readPlain(entry);
    return readSpelledValue(entry.tag, spelledText(entry), readPlain(entry));
}

// The value of an entry with another text for it.
Value LineDialect::readAs(const Statement& entry, const std::string& value) const
{
    const std::string line = '=' + value;
    Statement other = entry;
    other.text = line;
    other.begin = other.keyBegin = other.keyEnd = 0;
    other.markSize = 0;
    other.valueBegin = 1;
    other.valueEnd = static_cast<std::uint32_t>(line.size());
    return read(other);
}

Value LineDialect::readSpelling(const Statement& entry) const
{
    Spelling::Reading reading = dialect.spelling->read(entry.value());
    if (!isUtf8(reading.text))
        return {Type::ByteArray, std::move(reading.text)};
    Value plain = reading.isText ? Value{Type::String, reading.text} : plainValue(reading.text);
    if (entry.tag == Type::Null)
        return entry.value().empty() ? Value{Type::Null, {}} : plain;
    return entry.tag == Type::Group ? plain : readTaggedValue(entry.tag, reading.text, std::move(plain));
}

std::string LineDialect::spelledText(const Statement& entry) const
{
    return entry.continued ? joinLines(entry.value()) : std::string(entry.value());
}

Value LineDialect::readPlain(const Statement& entry) const
{
    const std::string_view value = entry.value();
    if (entry.continued)
        return {Type::String, joinLines(value)};
    if (quoteOf(entry) != '\0')
        return {Type::String, std::string(value.substr(1, value.size() - 2))};
    return plainValue(value);
}

// The ways to write the value, those of the dialect or those of the entry and of others in the file.
std::vector<std::string> LineDialect::formsOf(const Statement& entry, const Value& value,
                                              const LineStyle& style) const
{
    std::vector<std::string> forms;
    const bool isBytes = value.type == Type::ByteArray && entry.tag == Type::Group;
    const std::string text = isBytes ? std::get<std::string>(value.data) : toText(value);
    if (!dialect.spelling) {
        addGenericForms(forms, entry, value, style);
    } else {
        for (const std::string& form : dialect.spelling->write(text, entry.value()))
            forms.push_back(replaceLineFeeds(form, style.lineEnd));
    }
    // By indentation, which is the dialect's only way for several lines.
    if (dialect.spelling && !forms.empty() && hasLines(text, style))
        forms.push_back(
            replaceLineFeeds(text, style.lineEnd + std::string(entry.indent()) + style.continuation));
    return writesLatin1(entry, style) ? inLatin1(forms) : forms;
}

std::string LineDialect::explainCharacters(const Statement& entry, const std::string& text,
                                           const LineStyle& style)
{
    if (!isUtf8(text))
        return Reason::tr("the text holds half a character, which UTF-8 cannot hold");
    for (std::size_t at = 0; at < text.size() && writesLatin1(entry, style) && !toLatin1(text);) {
        const std::string_view character = std::string_view(text).substr(at, utf8Length(text.substr(at)));
        if (utf8CodePoint(character) > 0xFF)
            return Reason::tr("the file is ISO-8859-1, which has no %1", {quoted(character)});
        at += character.size();
    }
    if (writesLatin1(entry, style) && !toLatin1(text))
        return Reason::tr(
            "the file is ISO-8859-1, where these characters would be taken for others in UTF-8");
    return {};
}

void LineDialect::addGenericForms(std::vector<std::string>& forms, const Statement& entry, const Value& value,
                                  const LineStyle& style) const
{
    const bool isText = value.type == Type::String;
    const bool isTagged = entry.tag != Type::Group;
    const std::string text =
        value.type == Type::ByteArray && !isTagged ? std::get<std::string>(value.data) : toText(value);
    const char own = quoteOf(entry);
    if (own != '\0' && isText) {
        forms.push_back(own + text + own);
        const char other = own == '"' ? '\'' : '"';
        forms.push_back(other + text + other);
    }
    if (const auto alike = value.type == Type::Double ? spellLike(std::get<double>(value.data), entry.value())
                                                      : std::nullopt)
        forms.push_back(*alike);
    forms.push_back(text);
    if (style.quote != '\0' && isText)
        forms.push_back(style.quote + text + style.quote);
    if (hasLines(text, style))
        forms.push_back(replaceLineFeeds(text, style.lineEnd + style.continuation));
    if (isTagged) {
        const bool quoteFirst = mayQuotesRunOn() && text.find('"') != std::string::npos;
        forms.insert(quoteFirst ? forms.begin() : forms.end(), quoteTaggedText(text));
    }
}

bool LineDialect::holds(const std::string& text, const Statement& before, const Value& value) const
{
    const std::optional<Statement> now = scanEntry(text);
    if (!now || now->begin != before.begin || now->keyBegin != before.keyBegin || now->tag != before.tag ||
        now->key() != before.key() || !isSame(read(*now), value))
        return false;
    if (dialect.spelling && !dialect.spelling->read(now->value()).isValid)
        return false;
    if (dialect.quotesRunOn && measureValue(now->text.substr(now->valueBegin), dialect).openQuote != '\0')
        return false;
    // Without its blanks a comment would be nearer to the value than before.
    const bool keepsBlanks = dialect.spelling && !dialect.commentsAfter.empty();
    return keepsBlanks ? now->trailing() == before.trailing()
                       : trimBlanks(now->trailing()) == trimBlanks(before.trailing());
}

std::optional<std::string> LineDialect::write(const Statement& entry, const Value& value,
                                              const LineStyle& style) const
{
    const std::string trailing(entry.trailing());
    if (value.type == Type::Null && entry.tag == Type::Group) {
        std::string text = std::string(entry.text.substr(0, entry.keyEnd + entry.markSize)) + trailing;
        if (!style.bareKeys || !holds(text, entry, value))
            return std::nullopt;
        return text;
    }
    std::string head(entry.text.substr(0, entry.valueBegin));
    if (!entry.isSeparated())
        head += style.separator;
    if (lacksBlank(entry) && !isLeftOut(value))
        head += ' ';
    const std::vector<std::string> forms = formsOf(entry, value, style);
    std::optional<std::string> onlyAtEnd;
    for (const char* const blank : {"", " "}) {
        for (const std::string& form : forms) {
            std::string text = head + blank + form + trailing;
            if (form.find('\0') != std::string::npos || !holds(text, entry, value))
                continue;
            if (!runsOn(text))
                return text;
            if (!onlyAtEnd)
                onlyAtEnd = std::move(text);
        }
        if (!mayNeedBlank(head.back()))
            break;
    }
    return onlyAtEnd;
}

std::vector<std::string> LineDialect::writeRetyped(const Statement& entry, const Value& value,
                                                   const LineStyle& style) const
{
    std::vector<std::string> texts;
    const std::string retagged = renameTypeTag(entry.tags(), value.type).append(entry.lines());
    for (const std::string& head : {std::string(entry.lines()), retagged}) {
        const std::optional<Statement> line = scanEntry(head);
        // Bytes without a tag would make the file binary.
        const bool isFit = line && (value.type != Type::ByteArray || line->tag == value.type);
        if (auto text = isFit ? write(*line, value, style) : std::nullopt)
            texts.push_back(*std::move(text));
    }
    return texts;
}

bool LineDialect::namesType(const Statement& entry)
{
    return entry.tag != Type::Group || quoteOf(entry) != '\0';
}

std::string LineDialect::explainReading(const std::string& line, const Value& value) const
{
    const std::string text = toText(value);
    const std::optional<Statement> plain = scanEntry(line);
    const Value back = plain ? read(*plain) : Value();
    if (plain && back.type != value.type)
        return Reason::tr("%1 would read %2 back as %3, not as %4",
                          {fileNoun(), quoted(text), describeType(back.type), describeType(value.type)});
    if (plain && back != value)
        return Reason::tr("%1 would read %2 back as %3", {fileNoun(), quoted(text), quoted(toText(back))});
    return Reason::tr("%1 cannot hold %2 at this place", {fileNoun(), quoted(text)});
}

} // namespace Repository::Documents
