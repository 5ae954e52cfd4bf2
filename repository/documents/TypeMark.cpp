#include "repository/documents/TypeMark.h"

#include "host/FrameworkCore/Values/ValueText.h"

#include <algorithm>
#include <array>

namespace Repository::Documents {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

constexpr std::string_view keyword = "@type";
constexpr std::string_view blanks = " \t";

// In the order of Type.
constexpr std::array<std::string_view, 12> names{"",     "null", "bool",  "integer", "unsigned", "double",
                                                 "text", "list", "bytes", "date",    "time",     "datetime"};
static_assert(names.size() == static_cast<std::size_t>(Type::DateTime) + 1);

std::string_view behindBlanks(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text;
}

} // namespace

std::string_view typeName(Type type)
{
    return names[static_cast<std::size_t>(type)];
}

std::optional<Type> typeNamed(std::string_view name)
{
    const auto found = std::find(names.begin() + 1, names.end(), name);
    if (found == names.end())
        return std::nullopt;
    return static_cast<Type>(found - names.begin());
}

std::optional<Type> readTypeMark(std::string_view line)
{
    line = behindBlanks(line);
    if (line.empty() || (line[0] != ';' && line[0] != '#'))
        return std::nullopt;
    line = behindBlanks(line.substr(1));
    if (line.substr(0, keyword.size()) != keyword)
        return std::nullopt;
    line.remove_prefix(keyword.size());
    const std::string_view name = behindBlanks(line);
    if (name.size() == line.size())
        return std::nullopt;
    return typeNamed(name.substr(0, name.find_last_not_of(blanks) + 1));
}

std::string writeTypeMark(char comment, Type type)
{
    std::string line(1, comment);
    line += ' ';
    line += keyword;
    line += ' ';
    return line.append(typeName(type));
}

Value readMarkedValue(Type type, std::string_view text, Value plain)
{
    FrameworkCore::Values::ReadResult marked = FrameworkCore::Values::readText(text, type);
    return marked.ok() ? std::move(marked.value) : std::move(plain);
}

} // namespace Repository::Documents
