#include "repository/search/TextMatcher.h"

namespace Repository {

using FrameworkCore::AppConfig::PathPattern;

namespace {

constexpr QLatin1Char wildcard('*');

// Which finds what the wildcards stand for, the shortest that fits.
QString expressionOf(const QString& wildcards)
{
    QStringList literals = wildcards.split(wildcard);
    for (QString& literal : literals)
        literal = QRegularExpression::escape(literal);
    return literals.join(QLatin1String(".*?"));
}

} // namespace

TextMatcher::TextMatcher(const SearchQuery& query)
    : text(query.text), isWhole(query.isWhole), caseSensitivity(query.caseSensitivity)
{
    const bool isExpression = query.syntax == SearchQuery::Syntax::RegularExpression;
    const bool hasWildcards = query.syntax == SearchQuery::Syntax::Wildcard;
    if (hasWildcards)
        wildcards.emplace(isWhole ? text : wildcard + text + wildcard, caseSensitivity);
    replacement = query.replacement.value_or(QString());
    if (hasWildcards)
        replacement.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    QRegularExpression::PatternOptions options;
    options.setFlag(QRegularExpression::CaseInsensitiveOption, caseSensitivity == Qt::CaseInsensitive);
    options.setFlag(QRegularExpression::DotMatchesEverythingOption, hasWildcards);
    if (isExpression || (hasWildcards && query.replacement))
        expression.emplace(isExpression ? text : expressionOf(text),
                           isWhole ? BoundedExpression::Scope::WholeText : BoundedExpression::Scope::AnyPart,
                           options);
    if (expression && !expression->isValid())
        fault = PatternFault{expression->getError(), expression->getErrorOffset()};
}

std::optional<bool> TextMatcher::matches(const QStringRef& other) const
{
    if (wildcards)
        return wildcards->matches(other);
    if (expression)
        return expression->matches(other);
    return isWhole ? other.compare(text, caseSensitivity) == 0 : other.contains(text, caseSensitivity);
}

std::optional<QString> TextMatcher::replaced(const QString& other) const
{
    if (expression)
        return expression->replaced(other, replacement);
    if (isWhole)
        return other.compare(text, caseSensitivity) == 0 ? replacement : other;
    QString result = other;
    return result.replace(text, replacement, caseSensitivity);
}

} // namespace Repository
