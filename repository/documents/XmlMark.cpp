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
    while (true) {
        const std::size_t last = lead.find_last_not_of(blanks);
        const std::string_view text = lead.substr(0, last == std::string_view::npos ? 0 : last + 1);
        const std::size_t begin = text.rfind("<?");
        if (begin == std::string_view::npos || text.substr(text.size() - closing.size()) != closing ||
            text.compare(begin, xmlMarkBegin.size(), xmlMarkBegin) != 0)
            return marks;
        const std::size_t inside = begin + xmlMarkBegin.size();
        const auto mark = text.size() < inside + closing.size()
                              ? std::nullopt
                              : readMark(text.substr(inside, text.size() - closing.size() - inside));
        if (mark) {
            marks.push_back(*mark);
            marks.back().begin = begin;
            marks.back().end = text.size();
        }
        lead = lead.substr(0, begin);
    }
}

} // namespace Repository::Documents
