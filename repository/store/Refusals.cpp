#include "repository/store/Refusals.h"

#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/backends/Backend.h"
#include "repository/common/PathRules.h"
#include "repository/documents/Formats.h"

#include <cmath>

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

namespace {

// What attributes of the type hold; the bounds only where they matter.
QString describeContent(const QVariant& value, int metaType)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    const auto& row = FrameworkCore::Values::rowOf(FrameworkCore::Values::typeOf(metaType));
    std::string words(row.description);
    if (isNumber && std::trunc(number) == number)
        words += row.range;
    if (!row.example.empty())
        words.append(" as in ").append(row.example.substr(0, row.example.find('.'))); // without milliseconds
    return QString::fromStdString(words);
}

} // namespace

Outcome Refusals::wrongType(const QVariant& value, int wantedType)
{
    return {StatusCode::WrongType, QStringLiteral("it holds %1, which this cannot become without loss")
                                       .arg(describeContent(value, wantedType))};
}

Outcome Refusals::noAttributeType()
{
    return {
        StatusCode::WrongType,
        QStringLiteral("an attribute holds true or false, a number, a text, a list of texts, bytes, a date "
                       "or a time, and nothing else")};
}

Outcome Refusals::readOnly(const Node& node)
{
    if (isAtOrBelow(node.path, ownRoot))
        return ownTree();
    if (node.backend && (node.backend->isLocked() || !isWritable(node.backend->getAccessMode())))
        return readOnly(*node.backend);
    Outcome outcome(StatusCode::NotWritable, QStringLiteral("created as read-only"));
    outcome.change().details.append({node.path, {}});
    return outcome;
}

Outcome Refusals::readOnly(const Backend& backend)
{
    if (backend.isLocked())
        return backend.refuseLocked();
    Outcome outcome(StatusCode::NotWritable, QStringLiteral("it is open as read-only"));
    outcome.in(backend.getDescription().filePath);
    return outcome.advise(QStringLiteral("open it for writing to change it"));
}

Outcome Refusals::notFound()
{
    return {StatusCode::NotFound, QStringLiteral("no such attribute")};
}

Outcome Refusals::invalidPath(QStringView path)
{
    if (isTooDeep(path))
        return {StatusCode::InvalidPath,
                QStringLiteral("it has more than %1 names, or too many characters for its depth")
                    .arg(deepestPath)};
    return {StatusCode::InvalidPath,
            QStringLiteral("a path is names joined by '.', none of them empty and none with '*' in it")};
}

Outcome Refusals::ownTree()
{
    return {StatusCode::NotWritable,
            QStringLiteral("it belongs to the repository itself, which alone changes it")};
}

Outcome Refusals::losesComments()
{
    return Outcome(StatusCode::BackendFailure,
                   QStringLiteral("its comments have no place where it is to go, and would be lost"))
        .advise(QStringLiteral("copy it, and remove it here"));
}

Outcome Refusals::noBackend()
{
    return {StatusCode::NotFound, QStringLiteral("no backend has that name")};
}

Outcome Refusals::noType(const QString& type)
{
    QStringList known;
    const bool namesDialect = type.contains(QLatin1Char(':'));
    for (const std::string& name :
         namesDialect ? Documents::getDialectTypes() : Documents::getDocumentTypes())
        known.append(QString::fromStdString(name));
    return Outcome(StatusCode::BackendFailure, QStringLiteral("unknown backend type '%1'").arg(type))
        .advise(QStringLiteral("valid types: ") + known.join(QStringLiteral(", ")));
}

Outcome Refusals::unfit(Outcome outcome, const QVariant& value, bool isHidden)
{
    if (outcome.ok() || outcome == StatusCode::NotWritable) // which says nothing of the value
        return outcome;
    const QString text = value.toString();
    const QString shown = Outcome::shortened(text);
    if (isHidden)
        outcome.change().reason = QStringLiteral("its file has no form for the value at this place");
    else if (shown != text)
        outcome.change().reason.replace(text, shown);
    return outcome;
}

Outcome Refusals::unfitFor(const Node& node, Outcome outcome, const QVariant& value)
{
    outcome = unfit(std::move(outcome), value, !node.isReadable());
    if (outcome.ok() || outcome == StatusCode::NotWritable || !node.isReadable())
        return outcome;
    const Documents::Format* const format =
        Documents::findFormat(node.backend->getDescription().type.toStdString());
    const auto held = FrameworkCore::Values::toValue(value);
    if (format && !format->explainTypeTag(held).empty())
        outcome.advise(QStringLiteral("remove it and create it as ") +
                       QString::fromStdString(FrameworkCore::Values::describeType(held.type)));
    return outcome;
}

Outcome Refusals::notSet(Outcome outcome, const QString& path, const QVariant& value, bool isHidden)
{
    if (outcome.ok())
        return outcome;
    outcome.of(Outcome::Operation::Set, path);
    if (!isHidden)
        outcome.change().value = value;
    return outcome;
}

} // namespace Repository
