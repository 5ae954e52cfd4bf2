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

// A span of text from its first to its last character that counts: blanks that are spelled as they are,
// comments and processing instructions around it do not.
struct XmlSpan
{
    std::size_t begin = 0;
    std::size_t end = 0; // of an empty span the same as its begin

    bool isEmpty() const { return begin == end; }
};

// In a text between two tags.
XmlSpan findXmlValue(std::string_view between);

// The text that a piece of the file between two tags, or between quotes, stands for. A reference to something
// that is not known stands for itself.
std::string decodeXmlText(std::string_view spelling, const XmlEntities& entities);
std::string decodeXmlAttribute(std::string_view spelling, const XmlEntities& entities);

// True when every character stands for itself; only such a text is looked at for numbers and truth values.
bool isLiteralXml(std::string_view spelling);

// True for one CDATA section or several in a row, and nothing else.
bool isXmlSection(std::string_view spelling);

// The comments and processing instructions in a text between two tags, but for type tags, which would come to
// are before something else.
std::string xmlCommentsIn(std::string_view between);

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

    // A mark at the front of the file tells the encoding.
    bool hasByteOrderMark() const { return encoding.byteOrderMarkSize() > 0; }
    bool isWide() const
    {
        return encoding.getKind() == TextEncoding::Kind::Utf16Le ||
               encoding.getKind() == TextEncoding::Kind::Utf16Be;
    }

    std::string spellText(std::string_view text) const;
    std::string spellAttribute(std::string_view text, char quote) const;

    // So that the text is not taken for a number or truth value; nothing for a text that does not allow it.
    std::optional<std::string> spellSection(std::string_view text) const;
    std::optional<std::string> spellAttributeAsText(std::string_view text, char quote) const;

private:
    void appendCharacter(std::string& spelling, std::string_view character) const;
};

} // namespace Repository::Documents
