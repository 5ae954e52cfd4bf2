#pragma once

#include "repository/documents/ini/IniFile.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Groups in braces, "name = {" to "}", in the sections of an ini file. Edits change the lines alone: the
// file is read again after them. Their cost is that of its size.
class IniBraces
{
public:
    explicit IniBraces(IniFile& iniFile) : file(iniFile), pieces(iniFile.pieces), index(iniFile.index) {}

    // Whether an entry, or a group for a value of none, of that path would be in braces.
    static bool holds(std::string_view path, const Value& value, const Dialect& dialect);

    // All pieces of a group, from those that open it to those that close it.
    std::vector<std::uint32_t> linesOf(std::uint32_t group) const;

    Outcome insert(std::string_view path, const Value& value);
    Outcome remove(const std::vector<std::uint32_t>& lines);

private:
    static constexpr std::uint32_t none = HashIndex::none;

    std::string indentIn(std::uint32_t group, std::uint32_t opening) const;
    std::string entryText(std::string_view name, const Value& value, const std::string& indent) const;

    IniFile& file;
    LinePieces& pieces;
    LineIndex& index;
};

} // namespace Repository::Documents
