#pragma once

#include "host/FrameworkCore/AppConfig/TreeInterface.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace Repository {

struct AttributeTree;

// Looks at the shape of the tree, each time as it is at one moment. Any thread.
class TreeReader
{
public:
    using ChildInformation = FrameworkCore::AppConfig::Interfaces::ChildInformation;
    using NodeInformation = FrameworkCore::AppConfig::Interfaces::NodeInformation;

    explicit TreeReader(AttributeTree& attributes) : tree(attributes) {}

    QStringList getChildNames(const QString& path) const;
    int getChildCount(const QString& path) const;
    QStringList getLastChildNames(const QString& path, int count) const;
    QVector<ChildInformation> getChildren(const QString& path, const QString& beginning) const;
    NodeInformation getNodeInformation(const QString& path) const;
    QStringList findPaths(const FrameworkCore::AppConfig::Interfaces::PathSearch& search) const;

private:
    // Of an element of a list, which has no node. The structure lock is held.
    NodeInformation elementInformation(const QString& path) const;

    AttributeTree& tree;
};

} // namespace Repository
