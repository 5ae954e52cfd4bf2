#include "cli/Condition.h"

#include "cli/Output.h"
#include "cli/Texts.h"
#include "host/FrameworkCore/AppConfig/AttributePath.h"
#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"

#include <QDateTime>
#include <QRegularExpression>

namespace CommandLine {

using FrameworkCore::Values::Type;

namespace {

// Exact for all whole numbers of 64 bits; nothing for a text that is not a number.
std::optional<long double> numberOf(const QString& text)
{
    const std::string bytes = text.toStdString();
    for (const Type type : {Type::Integer, Type::Unsigned, Type::Double}) {
        const auto result = FrameworkCore::Values::readText(bytes, type);
        if (!result.ok())
            continue;
        return std::visit(
            [](const auto& number) -> std::optional<long double> {
                if constexpr (std::is_arithmetic_v<std::decay_t<decltype(number)>>)
                    return static_cast<long double>(number);
                else
                    return {};
            },
            result.value.data);
    }
    return {};
}

template <typename T>
bool compares(const QString& comparison, const T& left, const T& right)
{
    if (comparison == QLatin1String("<"))
        return left < right;
    if (comparison == QLatin1String("<="))
        return left <= right;
    if (comparison == QLatin1String(">"))
        return left > right;
    if (comparison == QLatin1String(">="))
        return left >= right;
    return (left == right) == (comparison == QLatin1String("="));
}

// A text in quotes is what is between them.
QString unquoted(const QString& text)
{
    const bool isQuoted = text.size() > 1 && text.front() == text.back() &&
                          (text.front() == QLatin1Char('"') || text.front() == QLatin1Char('\''));
    return isQuoted ? text.mid(1, text.size() - 2) : text;
}

} // namespace

std::optional<Condition> Condition::parse(const QString& text, QString& reason)
{
    static const QRegularExpression form(
        QStringLiteral("^\\s*([A-Za-z]+)\\s*(!=|!~|<=|>=|==|=~|=|<|>|~)\\s*(.*?)\\s*$"),
        QRegularExpression::DotMatchesEverythingOption);
    const auto match = form.match(text);
    Condition condition;
    condition.field = match.captured(1);
    condition.comparison = match.captured(2);
    condition.operand = unquoted(match.captured(3));
    const QStringList fields{QStringLiteral("value"), QStringLiteral("name"), QStringLiteral("path"),
                             QStringLiteral("type")};
    if (!match.hasMatch() || !fields.contains(condition.field)) {
        reason = Texts::tr("'%1' is not a condition: value, name, path or type, then one of = != < <= > "
                           ">= ~ !~, then a text")
                     .arg(text);
        return {};
    }
    if (condition.comparison == QLatin1String("==") || condition.comparison == QLatin1String("=~"))
        condition.comparison.remove(0, 1);
    if (!condition.comparison.endsWith(QLatin1Char('~')))
        return condition;
    condition.expression.emplace(condition.operand, Repository::BoundedExpression::Scope::AnyPart);
    if (condition.expression->isValid())
        return condition;
    reason = Texts::tr("'%1' is not a regular expression: %2")
                 .arg(condition.operand, condition.expression->getError());
    return {};
}

std::optional<bool> Condition::holds(const Node& node) const
{
    if (field == QLatin1String("path"))
        return holdsFor(node.path);
    if (field == QLatin1String("name"))
        return holdsFor(FrameworkCore::AppConfig::nameOf(node.path));
    if (field == QLatin1String("type"))
        return !node.type.isEmpty() ? holdsFor(node.type) : false;
    if (!node.value)
        return false;
    return expression ? holdsFor(QString::fromStdString(Output::valueText(*node.value)))
                      : holdsOrdered(*node.value);
}

std::optional<bool> Condition::holdsFor(const QString& text) const
{
    if (!expression)
        return compares(comparison, text, operand);
    const auto matches = expression->matches(text);
    return matches ? std::optional(*matches == (comparison == QLatin1String("~"))) : std::nullopt;
}

// Numbers and moments by what they are, everything else as text; a number and a text have no order.
bool Condition::holdsOrdered(const QVariant& value) const
{
    const QString text = QString::fromStdString(Output::valueText(value));
    const auto left = numberOf(text);
    const auto right = numberOf(operand);
    if (left && right)
        return compares(comparison, *left, *right);
    const bool isOrder = comparison.startsWith(QLatin1Char('<')) || comparison.startsWith(QLatin1Char('>'));
    if (isOrder && (left || right))
        return false;
    const QDateTime moment = QDateTime::fromString(operand, Qt::ISODateWithMs);
    if (value.userType() == QMetaType::QDateTime && moment.isValid())
        return compares(comparison, value.toDateTime(), moment);
    return compares(comparison, text, operand);
}

} // namespace CommandLine
