#pragma once

#include "repository/documents/common/LineFile.h"
#include "repository/documents/ini/IniDialect.h"
#include "repository/documents/ini/IniScanner.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Repository::Documents {

// Paths of all sections on the way to a section cost the square of its depth, so there is an end to it.
constexpr int deepestIniSection = 1000;
bool isIniTooDeep(std::string_view sectionName);

// The text of an ini file.
class IniFile : public LineFile
{
public:
    IniFile();

    const LineDialect& getDialect() const override { return dialect; }

    // What of blank and comment lines is between a piece and the one chained below it.
    IniTrivia triviaBelow(std::uint32_t piece) const;

    // Whether the section of a header or entry goes.
    bool goes(std::uint32_t piece) const;

    // Whether the entries, without those that go, mean the same when comments are elsewhere.
    bool allowsComments(IniComments comments) const;

    IniDialect dialect;
    std::uint32_t firstHeader = none; // of those that are not indented; decides where comments are

private:
    Outcome readStatements(bool isOwn) override;
    Outcome takeUpHeader(std::uint32_t piece, std::uint32_t& section);
    void takeUpEntry(std::uint32_t piece, std::uint32_t section);
    void learnStyle(const Statement& entry);
    Statement scanOwn(std::string_view text) const override;
    std::string findClash(std::uint32_t piece, const Statement& line) const override;
};

} // namespace Repository::Documents
