#pragma once

#include "repository/documents/ini/IniFile.h"

#include <cstdint>
#include <vector>

namespace Repository::Documents {

// Takes a node and all below it out of an ini file.
class IniRemoval
{
public:
    IniRemoval(IniFile& iniFile, std::uint32_t node);

    Outcome run();

private:
    static constexpr std::uint32_t none = HashIndex::none;

    Outcome check() const;
    bool entryCanGo() const;
    bool sectionsCanGo() const;
    bool frontCanGo() const;
    void setGoing(bool isGoing);
    void takeComments();
    void takeSections();

    IniFile& file;
    LinePieces& pieces;
    LineIndex& index;
    const std::uint32_t top;
    std::vector<std::uint32_t> going; // sections, those around others before them
};

} // namespace Repository::Documents
