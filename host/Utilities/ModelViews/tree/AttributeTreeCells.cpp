#include "host/Utilities/ModelViews/tree/AttributeTreeCells.h"

#include "host/FrameworkCore/AppConfig/AttributePath.h"
#include "host/Utilities/ModelViews/AttributeValueText.h"
#include "host/Utilities/ModelViews/ToolTipText.h"

#include <QFont>
#include <QGuiApplication>
#include <QPalette>

#include <utility>

namespace Utilities::ModelViews {

using FrameworkCore::AppConfig::AccessMode;

namespace {

QIcon loadIcon(const QString& name)
{
    const QString file = QLatin1String(":/VantryHost/") + name + QLatin1String("%1.png");
    QIcon icon(file.arg(QString()));
    // Without one of its own a selected icon is blended with the highlight, until nothing of it is seen.
    const QPalette palette = QGuiApplication::palette();
    const bool isDark =
        palette.highlight().color().lightness() < palette.highlightedText().color().lightness();
    icon.addFile(file.arg(isDark ? QStringLiteral("_selected") : QString()), {}, QIcon::Selected);
    return icon;
}

} // namespace

void AttributeTreeCells::setRepository(const std::shared_ptr<RepositoryInterface>& repository)
{
    reader = repository ? repository->getReaderInterface() : nullptr;
    backends = repository ? repository->getBackendInterface() : nullptr;
    validations = repository ? repository->getValidationInterface() : nullptr;
    tree = repository ? repository->getTreeInterface() : nullptr;
}

QSet<QString> AttributeTreeCells::setBackendNames(const QStringList& names)
{
    backendNames = names;
    return updateRoots();
}

QSet<QString> AttributeTreeCells::setBackendPaths(const QStringList& paths)
{
    backendPaths = paths;
    return updateRoots();
}

QSet<QString> AttributeTreeCells::updateRoots()
{
    const QSet<QString> names(backendNames.cbegin(), backendNames.cend());
    QSet<QString> roots;
    for (const QString& path : qAsConst(backendPaths)) {
        if (names.contains(FrameworkCore::AppConfig::nameOf(path)))
            roots.insert(path);
    }
    const QSet<QString> before = std::exchange(backendRoots, roots);
    return (before - backendRoots) + (backendRoots - before);
}

QSet<QString> AttributeTreeCells::setLockedRoots(const QStringList& paths)
{
    const QSet<QString> before = std::exchange(lockedRoots, QSet<QString>(paths.cbegin(), paths.cend()));
    return (before - lockedRoots) + (lockedRoots - before);
}

QSet<QString> AttributeTreeCells::setUnsavedRoots(const QStringList& paths)
{
    const QSet<QString> before = std::exchange(unsavedRoots, QSet<QString>(paths.cbegin(), paths.cend()));
    return (before - unsavedRoots) + (unsavedRoots - before);
}

QSet<QString> AttributeTreeCells::setUnsavedPaths(const QSet<QString>& paths)
{
    if (paths == unsavedPaths)
        return {};
    const QSet<QString> before = std::exchange(unsavedPaths, paths);
    return (before - unsavedPaths) + (unsavedPaths - before);
}

AttributeTreeCells::NodeInformation AttributeTreeCells::informationOf(const QString& path) const
{
    return tree ? tree->getNodeInformation(path) : NodeInformation();
}

QVariant AttributeTreeCells::readValue(const QString& path) const
{
    QVariant value;
    if (reader)
        reader->readAttributeValue(path, value, 0);
    return value;
}

QString AttributeTreeCells::stateOf(const QString& root) const
{
    const QString backend = informationOf(root).backend;
    return readValue(QStringLiteral("internal.backends.states.") + backend).toString();
}

QSet<QString> AttributeTreeCells::rootsWithState() const
{
    QSet<QString> roots;
    for (const QString& root : backendRoots) {
        if (!stateOf(root).isEmpty())
            roots.insert(root);
    }
    return roots;
}

QString AttributeTreeCells::readableName(const QString& name, const QString& path) const
{
    return name.contains(QLatin1Char('%')) && isOnDisk(path) ? FrameworkCore::AppConfig::decodedName(name)
                                                             : name;
}

// Of a file or a folder; an entry of a file is in it.
bool AttributeTreeCells::isOnDisk(const QString& path) const
{
    if (isBackendRoot(path) || !backends)
        return isBackendRoot(path);
    const auto backend = backends->getBackendInformation(informationOf(path).backend);
    return backend && backend->getBackendType() == QLatin1String("folder");
}

QVariant AttributeTreeCells::nameCell(const QString& name, const QString& path, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return name;
    case Qt::DecorationRole:
        return iconOf(path);
    case Qt::FontRole:
        return fontOf(path);
    case Qt::ToolTipRole:
        return toolTip(path);
    case Qt::AccessibleTextRole:
        return accessibleName(name, path);
    case Qt::AccessibleDescriptionRole:
        return path;
    default:
        return {};
    }
}

QVariant AttributeTreeCells::valueCell(const QString& path, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole: {
        QString text = attributeValueText(readValue(path));
        if (text.isEmpty() && isBackendRoot(path)) // without the reason, which the tool tip has
            text = stateOf(path).section(QStringLiteral(": "), 0, 0);
        return text.isEmpty() ? QVariant() : text;
    }
    case Qt::EditRole:
        return readValue(path);
    case Qt::ToolTipRole:
        return toolTip(path);
    default:
        return {};
    }
}

const QIcon& AttributeTreeCells::iconOf(const QString& path) const
{
    const auto loaded = [](QIcon& icon, const char* name) -> const QIcon& {
        if (icon.isNull())
            icon = loadIcon(QLatin1String(name));
        return icon;
    };
    if (isBackendRoot(path) && lockedRoots.contains(path))
        return isUnsaved(path) ? loaded(unsavedLockedBackendIcon, "backend_locked_unsaved")
                               : loaded(lockedBackendIcon, "backend_locked");
    if (isBackendRoot(path))
        return isUnsaved(path) ? loaded(unsavedBackendIcon, "backend_unsaved")
                               : loaded(backendIcon, "backend");
    return isUnsaved(path) ? loaded(unsavedAttributeIcon, "attribute_unsaved")
                           : loaded(attributeIcon, "attribute");
}

QVariant AttributeTreeCells::fontOf(const QString& path) const
{
    const NodeInformation information = informationOf(path);
    const bool isReadOnly = information.isAttribute && information.accessMode == AccessMode::ReadOnly;
    const bool isRoot = isBackendRoot(path);
    if (!isReadOnly && !isRoot)
        return {};
    QFont font; // the view resolves it against its own
    if (isRoot)
        font.setBold(true);
    if (isReadOnly)
        font.setItalic(true);
    return font;
}

QString AttributeTreeCells::accessText(AccessMode mode)
{
    switch (mode) {
    case AccessMode::ReadOnly:
        return tr("read-only");
    case AccessMode::WriteOnly:
        return tr("write-only");
    case AccessMode::ReadWrite:
        return tr("read-write");
    case AccessMode::None:
        break;
    }
    return tr("none");
}

QString AttributeTreeCells::accessibleName(const QString& name, const QString& path) const
{
    const NodeInformation information = informationOf(path);
    QStringList parts{readableName(name, path)};
    if (isBackendRoot(path))
        parts.append(tr("backend"));
    if (lockedRoots.contains(path))
        parts.append(tr("locked"));
    if (isUnsaved(path))
        parts.append(tr("unsaved changes"));
    if (information.isAttribute && information.accessMode != AccessMode::ReadWrite)
        parts.append(accessText(information.accessMode));
    return parts.join(QStringLiteral(", "));
}

QString AttributeTreeCells::toolTip(const QString& path) const
{
    const NodeInformation information = informationOf(path);
    QStringList lines{path};
    if (information.isAttribute) {
        lines.append(
            tr("Type: %1").arg(information.dataType.isEmpty() ? tr("none yet") : information.dataType));
        lines.append(tr("Access: %1").arg(accessText(information.accessMode)));
    }
    const QStringList attached = validations ? validations->getValidationsOf(path) : QStringList();
    if (!attached.isEmpty())
        lines.append(tr("Validations: %1").arg(attached.join(QStringLiteral(", "))));
    if (isBackendRoot(path)) {
        lines.append(tr("Root of the backend: %1").arg(information.backend));
        const auto root = backends ? backends->getBackendInformation(information.backend) : nullptr;
        if (root && !root->getBackendLocation().isEmpty())
            lines.append(tr("File: %1").arg(root->getBackendLocation()));
        const QString state = stateOf(path);
        if (!state.isEmpty())
            lines.append(tr("State: %1").arg(state));
    } else if (!information.backend.isEmpty()) {
        lines.append(tr("Backend: %1").arg(information.backend));
    }
    if (lockedRoots.contains(path))
        lines.append(tr("Locked against changes"));
    if (isUnsaved(path))
        lines.append(tr("Holds changes that are not saved"));
    return toolTipText(lines.join(QLatin1Char('\n')));
}

} // namespace Utilities::ModelViews
