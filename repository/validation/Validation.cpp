#include "repository/validation/Validation.h"

#include "host/FrameworkCore/AppConfig/Outcome.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/common/Texts.h"
#include "repository/validation/BoundedExpression.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QUrl>

#include <map>
#include <optional>

namespace Repository {

namespace {

using Verdict = Validation::Verdict;
using Accepts = std::function<bool(const QVariant&, const QString&)>;

auto judgeBy(Accepts accepts)
{
    return [accepts = std::move(accepts)](const QVariant& value, const QString& text) {
        return accepts(value, text) ? Verdict::Keeps : Verdict::Breaks;
    };
}

// The value as one of another type, if nothing is lost.
bool becomes(const QVariant& value, QMetaType::Type type)
{
    return FrameworkCore::Values::convertVariant(value, type).has_value();
}

QString textOf(const QVariant& value)
{
    const auto text = FrameworkCore::Values::convertVariant(value, QMetaType::QString);
    return text ? text->toString() : value.toStringList().join(QLatin1Char(','));
}

bool isIpv4(const QString& text)
{
    static const QRegularExpression pattern(
        QStringLiteral("\\A(?:(?:25[0-5]|2[0-4]\\d|1\\d\\d|[1-9]?\\d)(?:\\.(?!\\z)|\\z)){4}\\z"));
    return pattern.match(text).hasMatch();
}

// RFC 4291 text form: groups of up to four hex digits, "::" at most once, an IPv4 address at the end.
bool isIpv6(const QString& text)
{
    QString groups = text;
    const int lastColon = text.lastIndexOf(QLatin1Char(':'));
    if (lastColon >= 0 && text.indexOf(QLatin1Char('.')) > lastColon) {
        if (!isIpv4(text.mid(lastColon + 1)))
            return false;
        groups = text.left(lastColon + 1) + QLatin1String("0:0");
    }
    static const QRegularExpression group(QStringLiteral("\\A[0-9A-Fa-f]{1,4}\\z"));
    const QStringList halves = groups.split(QStringLiteral("::"));
    if (halves.size() > 2)
        return false;
    int count = 0;
    for (const QString& half : halves) {
        if (half.isEmpty() && halves.size() == 2)
            continue;
        const QStringList parts = half.split(QLatin1Char(':'));
        for (const QString& part : parts) {
            if (!group.match(part).hasMatch())
                return false;
        }
        count += parts.size();
    }
    return halves.size() == 2 ? count <= 7 : count == 8;
}

// RFC 1123: labels of letters, digits and inner hyphens, at most 63 each and 253 together.
bool isHostName(const QString& text)
{
    static const QRegularExpression pattern(
        QStringLiteral("\\A[A-Za-z0-9](?:[A-Za-z0-9-]{0,61}[A-Za-z0-9])?"
                       "(?:\\.[A-Za-z0-9](?:[A-Za-z0-9-]{0,61}[A-Za-z0-9])?)*\\.?\\z"));
    return text.size() <= 253 && pattern.match(text).hasMatch();
}

bool isUrl(const QString& text)
{
    const QUrl url(text, QUrl::StrictMode);
    return url.isValid() && !url.scheme().isEmpty() && (!url.host().isEmpty() || !url.path().isEmpty());
}

const std::map<QString, std::pair<QString, Accepts>>& plainRules()
{
    static const std::map<QString, std::pair<QString, Accepts>> validations{
        {QStringLiteral("not-empty"),
         {Texts::tr("not empty"), [](const QVariant&, const QString& text) { return !text.isEmpty(); }}},
        {QStringLiteral("integer"),
         {Texts::tr("an integer"),
          [](const QVariant& value, const QString&) {
              return becomes(value, QMetaType::LongLong) || becomes(value, QMetaType::ULongLong);
          }}},
        {QStringLiteral("number"),
         {Texts::tr("a number"),
          [](const QVariant&, const QString& text) {
              bool isNumber = false;
              text.toDouble(&isNumber);
              return isNumber;
          }}},
        {QStringLiteral("boolean"),
         {Texts::tr("true or false"),
          [](const QVariant& value, const QString&) { return becomes(value, QMetaType::Bool); }}},
        {QStringLiteral("ipv4"),
         {Texts::tr("an IPv4 address"), [](const QVariant&, const QString& text) { return isIpv4(text); }}},
        {QStringLiteral("ipv6"),
         {Texts::tr("an IPv6 address"), [](const QVariant&, const QString& text) { return isIpv6(text); }}},
        {QStringLiteral("host-name"),
         {Texts::tr("a host name"), [](const QVariant&, const QString& text) { return isHostName(text); }}},
        {QStringLiteral("url"),
         {Texts::tr("a URL with its scheme"),
          [](const QVariant&, const QString& text) { return isUrl(text); }}},
        {QStringLiteral("date-time"),
         {Texts::tr("a date and time as in 2024-05-31T08:00:00"), [](const QVariant&, const QString& text) {
              return QDateTime::fromString(text, Qt::ISODateWithMs).isValid();
          }}}};
    return validations;
}

std::optional<QString> fillRange(const QString& argument, Validation& validation)
{
    const QStringList bounds = argument.split(QLatin1Char(','));
    bool lowIsNumber = false;
    bool highIsNumber = false;
    const double low = bounds.first().trimmed().toDouble(&lowIsNumber);
    const double high = bounds.last().trimmed().toDouble(&highIsNumber);
    if (bounds.size() != 2 || !lowIsNumber || !highIsNumber || !(low <= high)) // "nan" is not a bound
        return Texts::tr("range needs a lower and an upper bound, as in range(0,100)");
    validation.expectation =
        Texts::tr("a number from %1 to %2").arg(bounds.first().trimmed(), bounds.last().trimmed());
    validation.judge = judgeBy([low, high](const QVariant&, const QString& text) {
        bool isNumber = false;
        const double number = text.toDouble(&isNumber);
        return isNumber && low <= number && number <= high;
    });
    return {};
}

std::optional<QString> fillOneOf(const QString& argument, Validation& validation)
{
    QStringList choices = argument.split(QLatin1Char(','));
    for (QString& choice : choices)
        choice = choice.trimmed();
    validation.expectation = Texts::tr("one of %1").arg(choices.join(QStringLiteral(", ")));
    validation.judge =
        judgeBy([choices](const QVariant&, const QString& text) { return choices.contains(text); });
    return {};
}

std::optional<QString> fillRegularExpression(const QString& argument, Validation& validation)
{
    // "a)|(?:b" is valid between the anchors only, where it would match what neither half means.
    const QRegularExpression bare(argument);
    const BoundedExpression expression(argument);
    if (!bare.isValid() || !expression.isValid())
        return Texts::tr("'%1' is not a regular expression: %2")
            .arg(argument, bare.isValid() ? expression.getError() : bare.errorString());
    validation.expectation = Texts::tr("a text that matches %1").arg(argument);
    validation.judge = [expression](const QVariant&, const QString& text) {
        const std::optional<bool> matches = expression.matches(text);
        if (!matches)
            return Verdict::Undecided;
        return *matches ? Verdict::Keeps : Verdict::Breaks;
    };
    return {};
}

using Fill = std::optional<QString> (*)(const QString& argument, Validation& validation);

struct RuleWithArgument
{
    Fill fill;
    QString example; // of an argument
};

const std::map<QString, RuleWithArgument>& rulesWithArgument()
{
    static const std::map<QString, RuleWithArgument> validations{
        {QStringLiteral("range"), {fillRange, QStringLiteral("0,100")}},
        {QStringLiteral("one-of"), {fillOneOf, QStringLiteral("low,medium,high")}},
        {QStringLiteral("regular-expression"), {fillRegularExpression, QStringLiteral("[a-z]+")}}};
    return validations;
}

} // namespace

QStringList validationNames()
{
    QStringList names;
    for (const auto& [name, validation] : plainRules())
        names.append(name);
    for (const auto& [name, validation] : rulesWithArgument())
        names.append(name);
    names.sort();
    return names;
}

QVector<FrameworkCore::AppConfig::Interfaces::ValidationDescription> validationDescriptions()
{
    QVector<FrameworkCore::AppConfig::Interfaces::ValidationDescription> descriptions;
    const QStringList names = validationNames();
    for (const QString& name : names) {
        const auto withArgument = rulesWithArgument().find(name);
        const QString example = withArgument == rulesWithArgument().end()
                                    ? name
                                    : QStringLiteral("%1(%2)").arg(name, withArgument->second.example);
        QString error;
        descriptions.append({example, makeValidation(example, error)->expectation});
    }
    return descriptions;
}

std::shared_ptr<const Validation> makeValidation(const QString& name, QString& error)
{
    auto validation = std::make_shared<Validation>();
    validation->name = name;
    const auto plain = plainRules().find(name);
    if (plain != plainRules().end()) {
        validation->expectation = plain->second.first;
        validation->judge = judgeBy(plain->second.second);
        return validation;
    }

    const int open = name.indexOf(QLatin1Char('('));
    const auto withArgument = rulesWithArgument().find(name.left(open));
    if (withArgument == rulesWithArgument().end()) {
        error = Texts::tr("unknown validation '%1'; known validations: %2")
                    .arg(name, validationNames().join(QStringLiteral(", ")));
        return {};
    }
    if (open < 0 || !name.endsWith(QLatin1Char(')'))) {
        error = Texts::tr("'%1' needs its argument in parentheses, as in %1(...)").arg(withArgument->first);
        return {};
    }
    if (const auto problem =
            withArgument->second.fill(name.mid(open + 1, name.size() - open - 2), *validation)) {
        error = *problem;
        return {};
    }
    return validation;
}

QString Breach::explain() const
{
    if (verdict == Verdict::Undecided)
        return Texts::tr("the validation '%1' could not be checked: matching this text takes more steps "
                         "or memory than are allowed; simplify the expression or shorten the text")
            .arg(validation->name);
    return Texts::tr("the validation '%1' asks for %2").arg(validation->name, validation->expectation);
}

QString Breach::explain(const QVariant& value) const
{
    return verdict == Verdict::Undecided
               ? explain()
               : Texts::tr("%1, not '%2'")
                     .arg(explain(), FrameworkCore::AppConfig::Outcome::shortened(textOf(value)));
}

Breach findBreach(const Validations& validations, const QVariant& value)
{
    if (validations.empty())
        return {};
    const QString text = textOf(value);
    for (const auto& validation : validations) {
        const Verdict verdict = validation->judge(value, text);
        if (verdict != Verdict::Keeps)
            return {validation, verdict};
    }
    return {};
}

} // namespace Repository
