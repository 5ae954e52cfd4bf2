#pragma once

#include "host/FrameworkCore/AppConfig/TreeInterface.h"

#include <QHash>
#include <QVariant>

namespace TestSupport {

struct FakeNode
{
    bool isAttribute = false;
    QVariant value;
    int type = QMetaType::UnknownType; // stays from the creation on
    FrameworkCore::AppConfig::AccessMode access = FrameworkCore::AppConfig::AccessMode::None;
    QStringList children; // names, in the order of their creation
};

// The nodes of a FakeRepository by their paths, groups among them, and the arithmetic of paths. With an empty
// separator every path is one component. Guarded by its owner.
class FakeTree
{
public:
    explicit FakeTree(const QString& pathSeparator) : separator(pathSeparator) {}

    FakeNode* find(const QString& path);
    const FakeNode* find(const QString& path) const;
    FakeNode& reach(const QString& path); // makes what is missing, ancestors too

    // Takes away the node, all below it, and the groups above it that hold nothing else, save those to keep.
    // Gives the paths of the attributes that went.
    QStringList remove(const QString& path, const QStringList& groupsToKeep);

    QStringList findPaths(const FrameworkCore::AppConfig::Interfaces::PathSearch& search) const;

    bool isValidPath(const QString& path) const;
    bool isAtOrBelow(const QString& path, const QString& root) const;
    QString join(const QStringList& components) const { return components.join(separator); }
    QString nameOf(const QString& path) const;

private:
    void take(const QString& path, QStringList& attributes);
    QString childPath(const QString& parent, const QString& name) const;
    QString parentOf(const QString& path) const;

    QString separator;
    QHash<QString, FakeNode> nodes; // the top has the empty path
};

} // namespace TestSupport
