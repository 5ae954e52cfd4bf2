#include "host/Utilities/ModelViews/dialogs/NewAttributePlace.h"

#include "host/FrameworkCore/AppConfig/AttributePath.h"
#include "host/Utilities/RepositoryAccess.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>

namespace Utilities::ModelViews::Widgets {

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
    const QString container = nearestNode(above(path));
    const NodeInformation ofContainer = informationOn(container);
    if (informationOn(path).exists)
        remarks.append(translated("'%1' is a group so far; it gets a value as well.").arg(path));
    else if (ofContainer.isAttribute && ofContainer.childCount == 0)
        remarks.append(
            translated("'%1' holds a value; it becomes a group as well, for which not every format has "
                       "a place.")
                .arg(container));
    const QString backend = informationOn(nearestNode(path)).backend;
    const auto information =
        backend.isEmpty() ? nullptr : repository->getBackendInterface()->getBackendInformation(backend);
    const QString tag = information ? information->explainTypeTag(value) : QString();
    if (!tag.isEmpty())
        remarks.append(tag);
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

} // namespace Utilities::ModelViews::Widgets
