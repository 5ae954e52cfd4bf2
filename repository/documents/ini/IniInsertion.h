#pragma once

#include "repository/documents/ini/IniFile.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Repository::Documents {

// Adds sections and entries to an ini file.
class IniInsertion
{
public:
    explicit IniInsertion(IniFile& iniFile)
        : file(iniFile), dialect(iniFile.dialect), pieces(iniFile.pieces), index(iniFile.index)
    {
    }

    Outcome insert(std::string_view path, const Value& value);

private:
    static constexpr std::uint32_t none = HashIndex::none;

    Outcome insertSection(std::string_view path);
    Outcome insertEntry(std::string_view path, const Value& value);
    std::string findClash(std::uint32_t above, const Statement& line) const;

    // Texts of new pieces; empty, with the reason, where the dialect has none.
    std::string headerText(std::string_view path, std::string& reason) const;
    std::string entryText(std::string_view key, const Value& value, std::uint32_t above,
                          std::string& reason) const;

    std::uint32_t placeSection(std::string_view path, const std::string& header);
    std::uint32_t placeFirstAtRoot(std::string text);
    void split(std::uint32_t trivia, std::size_t cut);
    bool endsBlank() const;

    IniFile& file;
    const Dialect& dialect;
    LinePieces& pieces;
    LineIndex& index;
};

} // namespace Repository::Documents
