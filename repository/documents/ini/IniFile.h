#pragma once

#include "repository/documents/common/LineFile.h"
#include "repository/documents/ini/IniDialect.h"
#include "repository/documents/ini/IniScanner.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Paths of all sections on the way to a section cost the square of its depth, so there is an end to it.
constexpr int deepestIniSection = 1000;
bool isIniTooDeep(std::string_view sectionName);

// The text of an ini file.
class IniFile : public LineFile
{
public:
    explicit IniFile(const Dialect& fileDialect);

    const LineDialect& getDialect() const override { return lineDialect; }

    // What of blank and comment lines is between a piece and the one chained below it.
    IniTrivia triviaBelow(std::uint32_t piece) const;

    // Whether the section of a header or entry goes.
    bool goes(std::uint32_t piece) const;

    // Why a line closes a quote that is open above or below it; empty when it does not.
    std::string findClosing(const Statement& line) const;

    std::string explainName(std::string_view text) const override;

    // Another spelling of the key that a section has already, but for that of one node; empty for none.
    std::string findSameKey(std::uint32_t section, std::string_view key,
                            std::uint32_t except = HashIndex::none) const;

    const Dialect& dialect;

private:
    const IniDialect lineDialect;
    std::string openQuotes;            // of values that would run on until they are closed
    std::vector<std::uint32_t> groups; // in braces that are open while the text is read

    bool takesWhatFollows(std::uint32_t piece, const Statement& line) const;
    Outcome readStatements(bool isOwn) override;
    Outcome takeUpHeader(std::uint32_t piece, std::uint32_t& section);
    void takeUpEntry(std::uint32_t piece, std::uint32_t section);
    Outcome takeUpBrace(std::uint32_t piece, std::uint32_t section);
    void learnStyle(const Statement& entry);
    char openQuoteOf(const Statement& entry) const;
    Statement scanOwn(std::string_view text) const override;
    std::string findClash(std::uint32_t piece, const Statement& line) const override;

    bool knowsContinuation = false; // from a value of the file
};

} // namespace Repository::Documents
