#include "cli/TypedText.h"

#include "cli/Output.h"
#include "cli/Suggestion.h"
#include "cli/Texts.h"
#include "cli/Usage.h"
#include "host/FrameworkCore/Values/ShellWord.h"
#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/documents/json/JsonScalar.h"

#include <cmath>

namespace CommandLine {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

std::string jsonOf(const Value& value)
{
    if (std::holds_alternative<std::monostate>(value.data))
        return "null";
    if (const auto* const elements = std::get_if<std::vector<std::string>>(&value.data)) {
        std::string list;
        for (const std::string& element : *elements)
            list += (list.empty() ? "" : ", ") + Repository::Documents::encodeString(element);
        return '[' + list + ']';
    }
    const std::string text = FrameworkCore::Values::toText(value);
    const auto* const number = std::get_if<double>(&value.data);
    const bool isText =
        std::holds_alternative<std::string>(value.data) || (number && !std::isfinite(*number));
    return isText ? Repository::Documents::encodeString(text) : text;
}

} // namespace

QStringList TypedText::typeNames()
{
    QStringList names;
    for (const auto& row : FrameworkCore::Values::typeTable())
        names.append(toText(row.name));
    names.removeFirst(); // of a group
    return names;
}

std::optional<Type> TypedText::typeNamed(const QString& name)
{
    const auto type = FrameworkCore::Values::typeNamed(name.toStdString());
    if (!type)
        Output::message(
            Texts::tr("unknown type '%1'%2; valid types: %3")
                .arg(name, suggestionFor(name, typeNames()), typeNames().join(QStringLiteral(", "))));
    return type;
}

QString TypedText::nameOf(const QVariant& value)
{
    return toText(FrameworkCore::Values::rowOf(FrameworkCore::Values::typeOf(value.userType())).name);
}

bool TypedText::isNull(const QString& text)
{
    return text == QLatin1String("null");
}

std::optional<QVariant> TypedText::read(const QString& text, Type type, QString& reason)
{
    if (type == Type::Null && isNull(text))
        return QVariant();
    const auto result = FrameworkCore::Values::readText(text.toStdString(), type);
    if (result.ok())
        return FrameworkCore::Values::toVariant(result.value);
    reason = FrameworkCore::Values::errorText(result);
    return {};
}

QVariant TypedText::readPlain(const QString& text)
{
    return FrameworkCore::Values::toVariant(FrameworkCore::Values::plainValue(text.toStdString()));
}

QString TypedText::asShellWord(const QVariant& value)
{
    return QString::fromStdString(FrameworkCore::Values::shellWord(Output::valueText(value)));
}

QString TypedText::toJson(const QVariant& value)
{
    return QString::fromStdString(jsonOf(FrameworkCore::Values::toValue(value)));
}

} // namespace CommandLine
