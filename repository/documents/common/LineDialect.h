#pragma once

#include "repository/documents/common/Dialect.h"
#include "repository/documents/common/Statement.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// How a file of lines writes its entries; what an edit adds follows it.
struct LineStyle
{
    std::string lineEnd = "\n";
    std::string indent;       // of an entry
    std::string separator;    // with the blanks around it
    std::string continuation; // indent of further lines of a value; empty when no value has any
    char quote = '\0';        // around values; none when no value is quoted
    char comment = '\0';      // that begins comments; none when there are none
    bool bareKeys = false;    // there are keys without a separator
    bool isKnown = false;     // an entry has shown indent and separator
    bool isLatin1 = false;    // of its characters beyond ASCII none is UTF-8

    void learn(const Statement& entry);
};

// How a file of lines spells the values of entries, in a dialect of its format.
class LineDialect
{
public:
    // The dialect must outlive this.
    explicit LineDialect(const Dialect& fileDialect) : dialect(fileDialect) {}
    virtual ~LineDialect() = default;

    // For people: "an ini file", "a section".
    std::string fileNoun() const { return Reason::tr(dialect.title); }
    virtual std::string groupNoun() const = 0;

    // True for a line that is a comment, and nothing else that is skipped.
    bool isComment(std::string_view content) const;

    // Where the comments end that belong to a section, in the blank lines and comments below it.
    std::size_t findSectionEnd(std::string_view trivia, bool hasHeaderBelow) const;

    // That on the line of a header, or the last one of an entry, with the blanks before it; empty without
    // one.
    std::string_view commentAfter(const Statement& line) const;

    // Why the program reads a line of the text otherwise; empty when it does not.
    std::string explainLength(std::string_view text) const;

    // What a new comment begins with, and whether it may follow a value.
    char commentSign() const;
    bool hasCommentsAfter() const { return !dialect.commentsAfter.empty(); }

    // The entry that the text is as a whole, which must outlive it; nothing when it is anything else.
    std::optional<Statement> scanEntry(std::string_view text) const { return scan(text); }
    std::optional<Statement> scanEntry(std::string&& text) const = delete;

    // What a key without separator means, what readSpelledValue gives for a tagged entry, a text where quotes
    // enclose the whole value, or else plainValue. A spelling of the dialect decides on quotes and escapes. A
    // value that is not UTF-8 is ISO-8859-1.
    Value read(const Statement& entry) const;

    // The text of the entry with another value, which read gives back; nothing when there is no such form.
    // One that runs on is the last choice.
    std::optional<std::string> write(const Statement& entry, const Value& value,
                                     const LineStyle& style) const;

    // The same of a tagged entry with a value of another type: without the tag, and with one that names the
    // new type.
    std::vector<std::string> writeRetyped(const Statement& entry, const Value& value,
                                          const LineStyle& style) const;

    // Whether a tag or quotes say of which type the value is, or it can only be bytes.
    static bool namesType(const Statement& entry);

    // Why there is no such form, for a person.
    virtual std::string explainRefusal(const Statement& entry, const Value& value,
                                       const LineStyle& style) const = 0;

    // True when an entry below that of the text would be read as part of its value.
    virtual bool runsOn(std::string_view /*text*/) const { return false; }

protected:
    const Dialect& dialect;

    // Why the file has no place for characters of the text; empty when it has.
    static std::string explainCharacters(const Statement& entry, const std::string& text,
                                         const LineStyle& style);

    // What of a refusal the line, which gives the value the plain way, makes clear.
    std::string explainReading(const std::string& line, const Value& value) const;

private:
    virtual std::optional<Statement> scan(std::string_view text) const = 0;

    // The text of a value that goes on over several lines.
    virtual std::string joinLines(std::string_view lines) const = 0;

    // True for a value after which the line ends with the separator.
    virtual bool isLeftOut(const Value& value) const = 0;

    // Whether some values need a blank after text that ends with this character.
    virtual bool mayNeedBlank(char last) const = 0;

    // Whether some readers go on after the end of the line until a quote is closed.
    virtual bool mayQuotesRunOn() const = 0;

    Value readAs(const Statement& entry, const std::string& value) const;
    Value readSpelling(const Statement& entry) const;
    std::string spelledText(const Statement& entry) const;
    Value readPlain(const Statement& entry) const;
    std::vector<std::string> formsOf(const Statement& entry, const Value& value,
                                     const LineStyle& style) const;
    void addGenericForms(std::vector<std::string>& forms, const Statement& entry, const Value& value,
                         const LineStyle& style) const;
    bool holds(const std::string& text, const Statement& before, const Value& value) const;
};

} // namespace Repository::Documents
