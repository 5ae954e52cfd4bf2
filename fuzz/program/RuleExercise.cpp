#include "fuzz/Exercises.h"
#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/AttributeRepository.h"
#include "repository/validation/Validation.h"

#include <QRegularExpression>

#include <algorithm>
#include <arpa/inet.h>
#include <optional>

namespace Fuzz {

using FrameworkCore::Values::decodeUtf8;
using Repository::AttributeRepository;
using Repository::Validation;
using Repository::Validations;

namespace {

constexpr int mostLines = 16;
constexpr int mostOfValueShown = 200; // in an explanation

bool isAsciiLetterOrDigit(QChar character)
{
    const ushort code = character.unicode();
    return (code >= '0' && code <= '9') || (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z');
}

// The system's own reading of an address. It takes an embedded NUL for the end, which a rule must not.
bool isAddress(int family, const QString& text)
{
    unsigned char address[sizeof(in6_addr)];
    return !text.contains(QChar::Null) && inet_pton(family, text.toUtf8().constData(), address) == 1;
}

bool isHostName(const QString& text)
{
    QStringList labels = text.split(QLatin1Char('.'));
    if (labels.size() > 1 && labels.last().isEmpty())
        labels.removeLast();
    return text.size() <= 253 && std::all_of(labels.begin(), labels.end(), [](const QString& label) {
               return !label.isEmpty() && label.size() <= 63 && !label.startsWith(QLatin1Char('-')) &&
                      !label.endsWith(QLatin1Char('-')) &&
                      std::all_of(label.begin(), label.end(), [](QChar character) {
                          return isAsciiLetterOrDigit(character) || character == QLatin1Char('-');
                      });
           });
}

// The verdict on a text where a reference knows it.
std::optional<bool> verdictOf(const QString& ruleName, const QString& text)
{
    if (ruleName == QLatin1String("not-empty"))
        return !text.isEmpty();
    if (ruleName == QLatin1String("ipv4"))
        return isAddress(AF_INET, text);
    if (ruleName == QLatin1String("ipv6"))
        return isAddress(AF_INET6, text);
    if (ruleName == QLatin1String("host-name"))
        return isHostName(text);
    return {};
}

bool accepts(const std::shared_ptr<const Validation>& rule, const QVariant& value)
{
    return !Repository::findBreach(Validations{rule}, value);
}

class RuleExercise
{
public:
    explicit RuleExercise(std::string_view input)
        : values(decodeUtf8(input).split(QLatin1Char('\n')).mid(0, mostLines)), name(values.takeFirst())
    {
        const int open = name.indexOf(QLatin1Char('('));
        kind = name.left(open);
        if (open >= 0)
            argument = name.mid(open + 1, name.size() - open - 2);
    }

    std::string run()
    {
        QString error;
        rule = Repository::makeValidation(name, error);
        if (!rule)
            return error.isEmpty() ? "a rule is refused without a reason" : std::string();
        for (const auto check : {&RuleExercise::checkText, &RuleExercise::checkArgument,
                                 &RuleExercise::checkVerdicts, &RuleExercise::checkAttribute}) {
            const QString broken = (this->*check)();
            if (!broken.isEmpty())
                return QStringLiteral("the rule '%1': %2").arg(name, broken).toStdString();
        }
        return {};
    }

private:
    QString checkText() const
    {
        QString error;
        const auto again = Repository::makeValidation(rule->name, error);
        if (rule->name != name || rule->expectation.isEmpty() || !again ||
            again->expectation != rule->expectation)
            return QStringLiteral("its text does not give the same rule again");
        return {};
    }

    // What the argument names itself, the rule must accept.
    QString checkArgument() const
    {
        QStringList named;
        if (kind == QLatin1String("range") || kind == QLatin1String("one-of"))
            named = argument.split(QLatin1Char(','));
        for (const QString& each : named) {
            if (!accepts(rule, each.trimmed()))
                return QStringLiteral("it refuses '%1', which it names").arg(each.trimmed());
        }
        if (kind == QLatin1String("regular-expression") && !QRegularExpression(argument).isValid())
            return QStringLiteral("its expression is not valid");
        return {};
    }

    QString checkVerdicts() const
    {
        for (const QString& text : values) {
            const auto plain =
                FrameworkCore::Values::toVariant(FrameworkCore::Values::plainValue(text.toStdString()));
            for (const QVariant& value :
                 {QVariant(text), plain, QVariant(text.split(QLatin1Char(';'))), QVariant(text.toUtf8())}) {
                const Repository::Breach breach = Repository::findBreach(Validations{rule}, value);
                if (breach && breach.explain(value).size() > breach.explain().size() + mostOfValueShown)
                    return QStringLiteral("its explanation shows all of a long value");
            }
            const QString broken = checkVerdict(text);
            if (!broken.isEmpty())
                return broken;
        }
        return {};
    }

    QString checkVerdict(const QString& text) const
    {
        const bool isAccepted = accepts(rule, text);
        if (verdictOf(name, text).value_or(isAccepted) != isAccepted)
            return QStringLiteral("it errs on '%1'").arg(text);
        if (kind != QLatin1String("regular-expression"))
            return {};
        // A match of the whole text is one that begins at its start. Without bounds the engine may give up.
        const auto match = QRegularExpression(argument).match(text, 0, QRegularExpression::NormalMatch,
                                                              QRegularExpression::AnchoredMatchOption);
        if (isAccepted && match.isValid() && !match.hasMatch())
            return QStringLiteral("it accepts '%1', at whose start the expression does not match").arg(text);
        if (text.contains(QChar::Null))
            return {}; // Qt escapes it as an octal number, to which digits after it would belong
        QString error;
        const auto literal = Repository::makeValidation(
            QStringLiteral("regular-expression(%1)").arg(QRegularExpression::escape(text)), error);
        if (!literal || !accepts(literal, text) || accepts(literal, text + QLatin1Char('x')))
            return QStringLiteral("escaped, '%1' is not what is matched").arg(text);
        return {};
    }

    // The same verdicts where the rule guards an attribute.
    QString checkAttribute() const
    {
        const auto repository = AttributeRepository::create({false});
        const auto writer = repository->getWriterInterface();
        const QString path = QStringLiteral("guarded");
        writer->createAttribute(path, QString(), 2, 3);
        if (repository->getValidationInterface()->addValidation(path, name) == 0)
            return QStringLiteral("an attribute does not take it");
        QVariant expected = QString();
        for (const QString& text : values) {
            const bool isWritten = writer->writeAttributeValue(path, text, 0) == 0;
            if (isWritten != accepts(rule, text))
                return QStringLiteral("an attribute guarded by it judges '%1' otherwise").arg(text);
            if (isWritten)
                expected = text;
            QVariant value;
            repository->getReaderInterface()->readAttributeValue(path, value, 0);
            if (value != expected)
                return QStringLiteral("an attribute guarded by it holds '%1' after '%2' was written")
                    .arg(value.toString(), text);
        }
        return {};
    }

    QStringList values;
    const QString name;
    QString kind; // the name without its argument
    QString argument;
    std::shared_ptr<const Validation> rule;
};

} // namespace

std::string exerciseRules(std::string_view input)
{
    return RuleExercise(input).run();
}

} // namespace Fuzz
