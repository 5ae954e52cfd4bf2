#include "repository/documents/xml/XmlTypeTag.h"

#include "repository/documents/common/TypeTag.h"

#include <algorithm>
#include <optional>

namespace Repository::Documents {

namespace {

constexpr std::string_view closing = "?>";
constexpr std::string_view comment = "<!--";
constexpr std::string_view doctype = "<!DOCTYPE";
constexpr std::string_view blanks = " \t\r\n";

std::string_view withoutBlanks(std::string_view text)
{
    const std::size_t begin = text.find_first_not_of(blanks);
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

// What is between the xmlTypeTagBegin and the closing of an instruction; nothing when it is not a type tag.
std::optional<XmlTypeTag> readTag(std::string_view inside)
{
    XmlTypeTag tag;
    bool isTyped = false;
    for (inside = withoutBlanks(inside); !inside.empty(); inside = withoutBlanks(inside)) {
        const std::size_t begin = inside.find("=\"");
        const std::size_t end = begin == std::string_view::npos ? begin : inside.find('"', begin + 2);
        if (end == std::string_view::npos)
            return std::nullopt;
        const std::string_view name = inside.substr(0, begin);
        const std::string_view value = inside.substr(begin + 2, end - begin - 2);
        inside.remove_prefix(end + 1);
        if (name == "type") {
            const auto type = typeNamed(value);
            if (!type)
                return std::nullopt;
            tag.type = *type;
            isTyped = true;
        } else if (name == "attribute") {
            tag.attribute = value;
        } else if (name == "escapes") {
            tag.escapes = value == "yes";
        } else {
            return std::nullopt;
        }
    }
    return isTyped ? std::optional(tag) : std::nullopt;
}

struct Instruction
{
    std::size_t begin;
    std::size_t end;
};

// The length of the text up to the end of the ending, which is looked for from a place on.
std::size_t lengthUpTo(std::string_view text, std::string_view ending, std::size_t from)
{
    const std::size_t found = text.find(ending, from);
    return found == std::string_view::npos ? text.size() : found + ending.size();
}

// Of the comment, the instruction or the literal that the text begins with; 0 for anything else.
std::size_t lengthOfOpaque(std::string_view text)
{
    if (startsWith(text, comment))
        return lengthUpTo(text, "-->", comment.size());
    if (startsWith(text, "<?"))
        return lengthUpTo(text, closing, 2);
    return text[0] == '"' || text[0] == '\'' ? lengthUpTo(text, text.substr(0, 1), 1) : 0;
}

// Of the document type declaration that the text begins with. What its literals hold is not markup.
std::size_t lengthOfDoctype(std::string_view text)
{
    bool isInSubset = false;
    for (std::size_t at = doctype.size(); at < text.size();) {
        const std::size_t opaque = lengthOfOpaque(text.substr(at));
        if (opaque == 0 && text[at] == '>' && !isInSubset)
            return at + 1;
        if (opaque == 0 && (text[at] == '[' || text[at] == ']'))
            isInSubset = text[at] == '[';
        at += std::max<std::size_t>(opaque, 1);
    }
    return text.size();
}

// From the front, since what comes before may hold what looks like the beginning of an instruction.
std::vector<Instruction> findInstructions(std::string_view leading)
{
    std::vector<Instruction> found;
    for (std::size_t at = leading.find('<'); at != std::string_view::npos; at = leading.find('<', at)) {
        const std::string_view rest = leading.substr(at);
        const std::size_t length = startsWith(rest, doctype) ? lengthOfDoctype(rest) : lengthOfOpaque(rest);
        if (startsWith(rest, "<?"))
            found.push_back({at, at + length});
        at += std::max<std::size_t>(length, 1);
    }
    return found;
}

} // namespace

std::optional<Span> findDoctypeName(std::string_view leading)
{
    constexpr std::string_view blanks = " \t\r\n";
    for (std::size_t at = leading.find('<'); at < leading.size(); at = leading.find('<', at)) {
        const std::string_view rest = leading.substr(at);
        if (startsWith(rest, doctype)) {
            const std::size_t begin = leading.find_first_not_of(blanks, at + doctype.size());
            const std::size_t end = std::min(leading.find_first_of(" \t\r\n[>", begin), leading.size());
            return Span{begin, end - begin};
        }
        at += std::max<std::size_t>(lengthOfOpaque(rest), 1);
    }
    return std::nullopt;
}

std::string XmlTypeTag::write() const
{
    std::string text(xmlTypeTagBegin);
    text += "type=\"" + std::string(rowOf(type).name) + '"';
    if (!attribute.empty())
        text += " attribute=\"" + std::string(attribute) + '"';
    if (escapes)
        text += " escapes=\"yes\"";
    return text += closing;
}

std::vector<XmlTypeTag> readXmlTypeTags(std::string_view leading)
{
    std::vector<XmlTypeTag> tags;
    const std::vector<Instruction> instructions = findInstructions(leading);
    std::size_t end = leading.size();
    for (auto instruction = instructions.rbegin(); instruction != instructions.rend(); ++instruction) {
        const std::string_view text =
            leading.substr(instruction->begin, instruction->end - instruction->begin);
        if (!withoutBlanks(leading.substr(instruction->end, end - instruction->end)).empty() ||
            !startsWith(text, xmlTypeTagBegin))
            break;
        end = instruction->begin;
        const auto tag = text.size() < xmlTypeTagBegin.size() + closing.size()
                             ? std::nullopt
                             : readTag(text.substr(xmlTypeTagBegin.size(),
                                                   text.size() - closing.size() - xmlTypeTagBegin.size()));
        if (tag) {
            tags.push_back(*tag);
            tags.back().begin = instruction->begin;
            tags.back().end = instruction->end;
        }
    }
    return tags;
}

} // namespace Repository::Documents
