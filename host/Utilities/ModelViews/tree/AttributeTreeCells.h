#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QCoreApplication>
#include <QIcon>
#include <QSet>
#include <QString>
#include <QVariant>

#include <memory>

namespace Utilities::ModelViews {

// What the two cells of an attribute show, read from the repository each time. GUI thread.
class AttributeTreeCells
{
    Q_DECLARE_TR_FUNCTIONS(Utilities::ModelViews::AttributeTreeViewModel)

public:
    using RepositoryInterface = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    void setRepository(const std::shared_ptr<RepositoryInterface>& repository);

    // Gives the paths that have become a backend's root, or no longer are one.
    QSet<QString> setBackendNames(const QStringList& names);
    QSet<QString> setBackendPaths(const QStringList& paths);

    // Gives those that have become locked, or no longer are.
    QSet<QString> setLockedRoots(const QStringList& paths);

    // Give those that have become unsaved, or no longer are; the roots of backends are known sooner.
    QSet<QString> setUnsavedRoots(const QStringList& paths);
    QSet<QString> setUnsavedPaths(const QSet<QString>& paths);

    // Of the backends that say how they are, as one does that has a connection.
    QSet<QString> rootsWithState() const;

    bool isBackendRoot(const QString& path) const { return backendRoots.contains(path); }
    bool isUnsaved(const QString& path) const
    {
        return unsavedRoots.contains(path) || unsavedPaths.contains(path);
    }

    static QString accessText(FrameworkCore::AppConfig::AccessMode mode);

    // The name of a file or folder as it is on the disk; of anything else the name as it is.
    QString readableName(const QString& name, const QString& path) const;

    QVariant nameCell(const QString& name, const QString& path, int role) const;
    QVariant valueCell(const QString& path, int role) const;

private:
    using NodeInformation = FrameworkCore::AppConfig::Interfaces::NodeInformation;

    QSet<QString> updateRoots();
    bool isOnDisk(const QString& path) const;
    NodeInformation informationOf(const QString& path) const;
    QVariant readValue(const QString& path) const;
    QString stateOf(const QString& root) const; // empty for a backend that says nothing
    const QIcon& iconOf(const QString& path) const;
    QVariant fontOf(const QString& path) const;
    QString accessibleName(const QString& name, const QString& path) const;
    QString toolTip(const QString& path) const;

    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::AttributeReaderInterface> reader;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::TreeInterface> tree;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::BackendInterface> backends;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::ValidationInterface> validations;
    QStringList backendNames;
    QStringList backendPaths;
    QSet<QString> backendRoots;
    QSet<QString> lockedRoots;
    QSet<QString> unsavedRoots;
    QSet<QString> unsavedPaths;  // and all above them
    mutable QIcon attributeIcon; // loaded when first shown, since the application must exist by then
    mutable QIcon backendIcon;
    mutable QIcon unsavedAttributeIcon;
    mutable QIcon unsavedBackendIcon;
    mutable QIcon lockedBackendIcon;
    mutable QIcon unsavedLockedBackendIcon;
};

} // namespace Utilities::ModelViews
