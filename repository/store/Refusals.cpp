#include "repository/store/Refusals.h"

#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/backends/Backend.h"
#include "repository/common/PathRules.h"
#include "repository/common/Texts.h"
#include "repository/documents/Formats.h"
#include "repository/store/AttributeTree.h"

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
    const auto type = FrameworkCore::Values::typeOf(metaType);
    const std::string_view example = FrameworkCore::Values::rowOf(type).example;
    if (!example.empty())
        return Texts::tr("%1 as in %2")
            .arg(FrameworkCore::Values::typeText(type), QString::fromStdString(std::string(example.substr(
                                                            0, example.find('.'))))); // without milliseconds
    return isNumber && std::trunc(number) == number ? FrameworkCore::Values::rangeText(type)
                                                    : FrameworkCore::Values::typeText(type);
}

} // namespace

Outcome Refusals::wrongType(const QVariant& value, int wantedType)
{
    return {StatusCode::WrongType, Texts::tr("it holds %1, which this cannot become without loss")
                                       .arg(describeContent(value, wantedType))};
}

Outcome Refusals::noAttributeType()
{
    return {StatusCode::WrongType,
            Texts::tr("an attribute holds true or false, a number, a text, a list of texts, bytes, a date "
                      "or a time, and nothing else")};
}

Outcome Refusals::readOnly(const Node& node)
{
    if (isOwn(node))
        return ownTree();
    if (node.backend && (node.backend->isLocked() || !isWritable(node.backend->getAccessMode())))
        return readOnly(*node.backend);
    Outcome outcome(StatusCode::NotWritable, Texts::tr("created as read-only"));
    outcome.change().details.append({node.getPath(), {}});
    return outcome;
}

Outcome Refusals::readOnly(const Backend& backend)
{
    if (backend.isLocked())
        return backend.refuseLocked();
    Outcome outcome(StatusCode::NotWritable, Texts::tr("it is open as read-only"));
    outcome.in(backend.getDescription().filePath);
    return outcome.advise(Texts::tr("open it for writing to change it"));
}

Outcome Refusals::notFound()
{
    return {StatusCode::NotFound, Texts::tr("no such attribute")};
}

Outcome Refusals::invalidPath(QStringView path)
{
    if (isTooDeep(path))
        return {
            StatusCode::InvalidPath,
            Texts::tr("it has more than %1 names, or too many characters for its depth").arg(deepestPath)};
    return {StatusCode::InvalidPath,
            Texts::tr("a path is names joined by '.', none of them empty and none with '*' in it")};
}

Outcome Refusals::ownTree()
{
    return {StatusCode::NotWritable,
            Texts::tr("it belongs to the repository itself, which alone changes it")};
}

Outcome Refusals::losesComments()
{
    return Outcome(StatusCode::BackendFailure,
                   Texts::tr("its comments have no place where it is to go, and would be lost"))
        .advise(Texts::tr("copy it, and remove it here"));
}

Outcome Refusals::losesTags()
{
    return Outcome(StatusCode::BackendFailure,
                   Texts::tr("its tags have no form where it is to go, and would be lost"))
        .advise(Texts::tr("copy it, and remove it here"));
}

Outcome Refusals::losesDigits()
{
    return Outcome(StatusCode::BackendFailure,
                   Texts::tr("it has more digits of a second than are shown, which would be lost"))
        .advise(Texts::tr("set it to another value first"));
}

Outcome Refusals::noBackend()
{
    return {StatusCode::NotFound, Texts::tr("no backend has that name")};
}

Outcome Refusals::noType(const QString& type, QStringList valid)
{
    const bool namesDialect = type.contains(QLatin1Char(':'));
    if (namesDialect)
        valid.clear();
    if (valid.isEmpty()) {
        for (const std::string& name :
             namesDialect ? Documents::getDialectTypes() : Documents::getDocumentTypes())
            valid.append(QString::fromStdString(name));
    }
    return Outcome(StatusCode::BackendFailure, Texts::tr("unknown backend type '%1'").arg(type))
        .advise(Texts::tr("valid types: %1").arg(valid.join(QStringLiteral(", "))));
}

Outcome Refusals::unfit(Outcome outcome, const QVariant& value, bool isHidden)
{
    if (outcome.ok() || outcome == StatusCode::NotWritable) // which says nothing of the value
        return outcome;
    const QString text = value.toString();
    const QString shown = Outcome::shortened(text);
    if (isHidden)
        outcome.change().reason = Texts::tr("its file has no form for the value at this place");
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
        outcome.advise(
            Texts::tr("remove it and create it as %1").arg(FrameworkCore::Values::typeText(held.type)));
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
