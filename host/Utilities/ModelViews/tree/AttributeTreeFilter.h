#pragma once

#include "host/FrameworkCore/AppConfig/PathPattern.h"
#include "host/FrameworkCore/AppConfig/TreeInterface.h"

#include <QSet>
#include <QString>
#include <QStringList>

namespace Utilities::ModelViews {

// What a search path shows of the tree: the nodes that match it, all below them, and the ancestors that lead
// there. Without "*" only the node of that very path matches.
class AttributeTreeFilter
{
public:
    using ChildInformation = FrameworkCore::AppConfig::Interfaces::ChildInformation;
    using TreeInterface = FrameworkCore::AppConfig::Interfaces::TreeInterface;

    explicit AttributeTreeFilter(const QString& searchPath);

    bool isEverything() const { return everything; }
    bool matches(const QString& path) const { return everything || pattern.matches(path); }
    bool shows(const QString& path) const { return matches(path) || leading.contains(path); }

    // Finds the ancestors that lead to matches, anew.
    void readFrom(const TreeInterface& tree);

    // The shown ones among the children of a leading node, or of the top.
    QVector<ChildInformation> children(const TreeInterface& tree, const QString& path) const;

    // Keeps the leading ancestors right when nodes have come or gone at these paths.
    void noteCreated(const QString& path);
    void noteRemoved(const TreeInterface& tree, const QStringList& paths);

private:
    bool hasMatchBelowBase(const TreeInterface& tree) const;
    void lead(const QString& path);

    FrameworkCore::AppConfig::PathPattern pattern;
    bool everything;
    bool oneLevel; // all that can match are children of base
    QString base;
    QString namePrefix; // with oneLevel: how their names begin
    QSet<QString> leading;
};

// The paths above a path, the nearest first, without the top.
QStringList ancestorPaths(const QString& path);

} // namespace Utilities::ModelViews
