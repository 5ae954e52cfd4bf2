#pragma once

#include "repository/documents/common/LineDialect.h"
#include "repository/documents/ini/IniScanner.h"

#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// The values of an ini file. Those of an unknown program are joined by a line feed, or a blank after a
// backslash.
class IniDialect : public LineDialect
{
public:
    using LineDialect::LineDialect;

    std::string groupNoun() const override { return Reason::tr("a section"); }
    std::string explainRefusal(const Statement& entry, const Value& value,
                               const LineStyle& style) const override;

private:
    std::optional<Statement> scan(std::string_view text) const override;
    std::string joinLines(std::string_view lines) const override;
    bool isLeftOut(const Value& value) const override { return toText(value).empty(); }
    // Some values would run into a ":".
    bool mayNeedBlank(char last) const override { return last == ':' && !dialect.spelling; }
    bool mayQuotesRunOn() const override { return true; }
};

} // namespace Repository::Documents
