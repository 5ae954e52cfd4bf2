#include "repository/documents/XmlMark.h"

#include "repository/documents/TypeMark.h"

#include <optional>

namespace Repository::Documents {

namespace {

constexpr std::string_view closing = "?>";
constexpr std::string_view blanks = " \t\r\n";

std::string_view withoutBlanks(std::string_view text)
{
    const std::size_t begin = text.find_first_not_of(blanks);
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

// What stands between the xmlMarkBegin and the closing of an instruction; nothing when it is no mark.
std::optional<XmlMark> readMark(std::string_view inside)
{
    XmlMark mark;
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
            mark.type = *type;
            isTyped = true;
        } else if (name == "attribute") {
            mark.attribute = value;
        } else if (name == "escapes") {
            mark.escapes = value == "yes";
        } else {
            return std::nullopt;
        }
    }
    return isTyped ? std::optional(mark) : std::nullopt;
}

struct Instruction
{
    std::size_t begin;
    std::size_t end;
};

// From the front, since an instruction and a comment may hold what looks like the beginning of another.
std::vector<Instruction> findInstructions(std::string_view lead)
{
    constexpr std::string_view comment = "<!--";
    std::vector<Instruction> found;
    for (std::size_t at = lead.find('<'); at != std::string_view::npos; at = lead.find('<', at)) {
        const bool isComment = lead.substr(at, comment.size()) == comment;
        const bool isInstruction = lead.substr(at, 2) == "<?";
        const std::size_t end = isComment       ? lead.find("-->", at + comment.size())
                                : isInstruction ? lead.find(closing, at)
                                                : at;
        if (end == std::string_view::npos)
            break;
        if (isInstruction)
            found.push_back({at, end + closing.size()});
        at = end + 1;
    }
    return found;
}

} // namespace

std::string XmlMark::write() const
{
    std::string text(xmlMarkBegin);
    text += "type=\"" + std::string(typeName(type)) + '"';
    if (!attribute.empty())
        text += " attribute=\"" + std::string(attribute) + '"';
    if (escapes)
        text += " escapes=\"yes\"";
    return text += closing;
}

std::vector<XmlMark> readXmlMarks(std::string_view lead)
{
    std::vector<XmlMark> marks;
    const std::vector<Instruction> instructions = findInstructions(lead);
    std::size_t end = lead.size();
    for (auto instruction = instructions.rbegin(); instruction != instructions.rend(); ++instruction) {
        const std::string_view text = lead.substr(instruction->begin, instruction->end - instruction->begin);
        if (!withoutBlanks(lead.substr(instruction->end, end - instruction->end)).empty() ||
            text.substr(0, xmlMarkBegin.size()) != xmlMarkBegin)
            break;
        end = instruction->begin;
        const auto mark = text.size() < xmlMarkBegin.size() + closing.size()
                              ? std::nullopt
                              : readMark(text.substr(xmlMarkBegin.size(),
                                                     text.size() - closing.size() - xmlMarkBegin.size()));
        if (mark) {
            marks.push_back(*mark);
            marks.back().begin = instruction->begin;
            marks.back().end = instruction->end;
        }
    }
    return marks;
}

} // namespace Repository::Documents
