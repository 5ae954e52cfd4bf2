#pragma once

#include "host/FrameworkCore/AppConfig/PathPattern.h"
#include "host/FrameworkCore/AppConfig/SearchInterface.h"
#include "repository/validation/BoundedExpression.h"

#include <QString>

#include <optional>

namespace Repository {

// The text of a query, which others are compared with. Immutable; any thread.
class TextMatcher
{
public:
    using PatternFault = FrameworkCore::AppConfig::Interfaces::PatternFault;
    using SearchQuery = FrameworkCore::AppConfig::Interfaces::SearchQuery;

    explicit TextMatcher(const SearchQuery& query);

    const std::optional<PatternFault>& getFault() const { return fault; }

    // Nothing when it takes more steps than are allowed; so below.
    std::optional<bool> matches(const QStringRef& text) const;

    // The text with the query's replacement in each place that matches.
    std::optional<QString> replaced(const QString& text) const;

private:
    QString text;
    bool isWhole;
    Qt::CaseSensitivity caseSensitivity;
    QString replacement;
    std::optional<FrameworkCore::AppConfig::PathPattern> wildcards;
    std::optional<BoundedExpression> expression; // of wildcards, too, if the query replaces
    std::optional<PatternFault> fault;
};

} // namespace Repository
