#pragma once

#include "repository/documents/common/LineDialect.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/txt/TxtScanner.h"

#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// How a txt file spells values: lines that a backslash ends are joined, and in that of an unknown program an
// "=" may need a blank after it.
class TxtDialect : public LineDialect
{
public:
    using LineDialect::LineDialect;

    std::string groupNoun() const override { return Reason::tr("a group"); }
    std::string explainRefusal(const Statement& entry, const Value& value,
                               const LineStyle& style) const override;
    bool runsOn(std::string_view text) const override;

private:
    std::optional<Statement> scan(std::string_view text) const override
    {
        return scanTxtEntry(text, dialect);
    }
    std::string joinLines(std::string_view lines) const override;
    bool isLeftOut(const Value& value) const override { return toText(value).empty(); }
    // Some values would make an operator of an "=".
    bool mayNeedBlank(char last) const override { return !isBlank(last) && !dialect.spelling; }
    bool mayQuotesRunOn() const override { return false; }
};

} // namespace Repository::Documents
