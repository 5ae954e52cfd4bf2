#include "host/Utilities/ModelViews/dialogs/NewAttributePlace.h"

#include "host/FrameworkCore/AppConfig/AttributePath.h"
#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "host/Utilities/RepositoryAccess.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>
#include <limits>

namespace Utilities::ModelViews::Widgets {

namespace Values = FrameworkCore::Values;

namespace {

using FrameworkCore::AppConfig::pathSeparator;

QString translated(const char* text)
{
    return QCoreApplication::translate("NewAttributePlace", text);
}

QString above(const QString& path)
{
    return FrameworkCore::AppConfig::parentPath(path).toString();
}

// Json has a form of its own for all other types.
bool isMarkedInJson(const Values::Value& value)
{
    switch (value.type) {
    case Values::Type::ByteArray:
    case Values::Type::Date:
    case Values::Type::Time:
    case Values::Type::DateTime:
        return true;
    case Values::Type::Unsigned:
        return std::get<std::uint64_t>(value.data) <= std::uint64_t(std::numeric_limits<std::int64_t>::max());
    default:
        return false;
    }
}

// Where files hold plain texts: whether that of the value alone would be read as something else.
bool isMarkedAsText(const Values::Value& value, const QString& format)
{
    if (value.type == Values::Type::String && format == QLatin1String("xml"))
        return false;
    const std::string text = Values::toText(value);
    if (Values::plainValue(text).type != value.type)
        return true;
    const QString shown = QString::fromStdString(text);
    return value.type == Values::Type::String &&
           (shown != shown.trimmed() || shown.contains(QLatin1Char('\n')));
}

// How a file of the format notes the value's type; empty when it need not.
QString markRemark(const QString& format, const QVariant& variant)
{
    const Values::Value value = Values::toValue(variant);
    const bool isJson = format == QLatin1String("json");
    if (format.isEmpty() || !(isJson ? isMarkedInJson(value) : isMarkedAsText(value, format)))
        return {};
    if (isJson)
        return translated("The file notes its type in \"$types\", since json has no form for it.");
    if (format == QLatin1String("xml"))
        return translated("The file notes its type in an instruction <?vantry type=...?> before it.");
    return translated("The file notes its type in a comment line above it, as in \"# @type ...\".");
}

} // namespace

NewAttributePlace::NewAttributePlace(const QString& path)
    : parentPath(path), repository(GetAppConfigRepositoryInterface()),
      tree(repository && !path.isEmpty() ? repository->getTreeInterface() : nullptr)
{
}

QString NewAttributePlace::nameFault(const QString& name)
{
    if (name.isEmpty())
        return translated("The name is empty.");
    if (name.contains(QLatin1Char('*')))
        return translated("\"*\" stands for any text in searches; it cannot be part of a name.");
    if (name.startsWith(pathSeparator))
        return translated("The name begins with \".\", with no name before it.");
    if (name.endsWith(pathSeparator))
        return translated("The name ends with \".\", with no name after it.");
    if (name.contains(QLatin1String("..")))
        return translated("A name is missing between \"..\".");
    if (name.contains(QLatin1Char(';')))
        return translated("\";\" cannot be part of a name; write \"%3B\" for it.");
    static const QRegularExpression noCode(QStringLiteral("%(?![0-9A-F]{2})"));
    if (name.contains(noCode))
        return translated("\"%\" begins a code, as in \"%3B\" for \";\"; write \"%25\" for \"%\" itself.");
    const auto isControl = [](QChar character) { return character.category() == QChar::Other_Control; };
    if (std::any_of(name.begin(), name.end(), isControl))
        return translated("The name holds a line end, a tab or another character without a sign.");
    return {};
}

QString NewAttributePlace::faultOf(const QString& name) const
{
    const QString fault = nameFault(name);
    const bool isTaken = fault.isEmpty() && informationOn(pathOf(name)).isAttribute;
    return isTaken ? translated("There is an attribute '%1' already.").arg(pathOf(name)) : fault;
}

QStringList NewAttributePlace::remarksOn(const QString& name, const QVariant& value) const
{
    QStringList remarks;
    if (!tree)
        return remarks;
    const QString path = pathOf(name);
    const QString holder = nearestNode(above(path));
    const NodeInformation ofHolder = informationOn(holder);
    if (informationOn(path).exists)
        remarks.append(translated("'%1' is a group so far; it gets a value as well.").arg(path));
    else if (ofHolder.isAttribute && ofHolder.childCount == 0)
        remarks.append(
            translated("'%1' holds a value; it becomes a group as well, for which not every format has "
                       "a place.")
                .arg(holder));
    const QString mark = markRemark(formatOf(path), value);
    if (!mark.isEmpty())
        remarks.append(mark);
    return remarks;
}

QString NewAttributePlace::pathOf(const QString& name) const
{
    return FrameworkCore::AppConfig::joinedPath(parentPath, name);
}

NewAttributePlace::NodeInformation NewAttributePlace::informationOn(const QString& path) const
{
    return tree ? tree->getNodeInformation(path) : NodeInformation();
}

QString NewAttributePlace::nearestNode(const QString& path) const
{
    QString nearest = path;
    while (!nearest.isEmpty() && !informationOn(nearest).exists)
        nearest = above(nearest);
    return nearest;
}

QString NewAttributePlace::formatOf(const QString& path) const
{
    const QString backend = informationOn(nearestNode(path)).backend;
    const auto information =
        backend.isEmpty() ? nullptr : repository->getBackendInterface()->getBackendInformation(backend);
    return information ? information->getBackendType() : QString();
}

} // namespace Utilities::ModelViews::Widgets
