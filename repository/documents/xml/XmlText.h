#pragma once

#include "repository/documents/common/TextEncoding.h"
#include "repository/documents/xml/XmlEntities.h"
#include "repository/documents/xml/XmlNode.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

inline bool isXmlBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}
bool isXmlBlank(std::string_view text);

// A text without the blanks, comments and processing instructions around it. Blanks that are spelled
// otherwise count.
struct XmlSpan
{
    std::size_t begin = 0;
    std::size_t end = 0; // of an empty span the same as its begin

    bool isEmpty() const { return begin == end; }
};

// In a text between two tags; with the blanks around it where they belong to it. Blanks with a line end alone
// are layout anywhere.
XmlSpan findXmlValue(std::string_view between, bool keepsBlanks = false);

// The text between two tags, or between quotes. An unknown reference is kept as it is.
std::string decodeXmlText(std::string_view spelling, const XmlEntities& entities);
std::string decodeXmlAttribute(std::string_view spelling, const XmlEntities& entities);

// The text of an attribute that the file declares as a list of words: single blanks between them.
std::string joinedXmlTokens(const std::string& text);

// Without references and CDATA; only such a text may be a number or truth value.
bool isLiteralXml(std::string_view spelling);

// True for one CDATA section or several in a row, and nothing else.
bool isXmlSection(std::string_view spelling);

// The comments and processing instructions between two tags, but not type tags, which would come to apply
// elsewhere.
std::string xmlCommentsIn(std::string_view between);

// Whether there is any of those in a text with its tags.
bool hasXmlComment(std::string_view text);

// The references in a text, each with its "&" and ";".
std::vector<std::string_view> xmlReferencesIn(std::string_view spelling);

// Why xml cannot hold a text at all, for a person; empty when it can.
std::string explainUnheldXml(std::string_view text);

// Spells texts that xml can hold as a file of a certain encoding and line end does.
struct XmlSpelling
{
    TextEncoding encoding;
    bool isAscii = false; // the file declares it
    std::string lineEnd = "\n";

    bool canHold(std::string_view text) const;

    bool hasByteOrderMark() const { return encoding.byteOrderMarkSize() > 0; }
    bool isWide() const
    {
        return encoding.getKind() == TextEncoding::Kind::Utf16Le ||
               encoding.getKind() == TextEncoding::Kind::Utf16Be;
    }

    // Blanks at the edges of a text are spelled as references where they would be taken for layout.
    std::string spellText(std::string_view text, bool keepsBlanks) const
    {
        return spellText(text, 0, text.size(), keepsBlanks);
    }
    std::string spellAttribute(std::string_view text, char quote) const;

    // A part of the text.
    std::string spellText(std::string_view text, std::size_t begin, std::size_t end, bool keepsBlanks) const;

    // So that the text is not taken for a number or truth value; nothing for a text that does not allow it.
    std::optional<std::string> spellSection(std::string_view text) const;
    std::optional<std::string> spellAttributeAsText(std::string_view text, char quote) const;

private:
    template <typename Escape>
    std::string spell(std::string_view text, std::size_t begin, std::size_t end, const Escape& escape) const;
    void appendCharacter(std::string& spelling, std::string_view character) const;
};

} // namespace Repository::Documents
