#pragma once

#include "host/FrameworkCore/AppConfig/TreeInterface.h"
#include "host/Utilities/ModelViews/tree/AttributeTreeChanges.h"
#include "host/Utilities/ModelViews/tree/AttributeTreeFilter.h"
#include "host/Utilities/ModelViews/tree/AttributeTreeRowEditor.h"

#include <QHash>
#include <QSet>

#include <memory>
#include <optional>
#include <vector>

namespace Utilities::ModelViews {

// The rows that a search path shows, as far as they have been asked for, and how they follow the repository.
// Between calls of follow and reread they stay as they are, whatever happens to the repository. A node is
// counted first and listed when its children are looked at. GUI thread.
class AttributeTreeContents
{
public:
    using ChildInformation = FrameworkCore::AppConfig::Interfaces::ChildInformation;
    using TreeInterface = FrameworkCore::AppConfig::Interfaces::TreeInterface;

    AttributeTreeContents(AttributeTreeRowListener& listener, const std::shared_ptr<TreeInterface>& tree,
                          const QString& searchPath);

    int count(const AttributeTreeNode& node);
    AttributeTreeItem& children(const AttributeTreeNode& node);
    AttributeTreeItem& getTop() { return *top; }

    // The node of a path. Without listing, only if it has been listed.
    std::optional<AttributeTreeNode> find(const QString& path, bool listing);

    // Nodes of that name in the whole tree, parents before their children; a negative number of hits means
    // all. Empty when there are so many that a walk finds the first ones sooner.
    std::optional<std::vector<AttributeTreeNode>> findName(const QString& name, int hits);

    void follow(const QVector<AttributeTreeStructureChange>& changes);
    void reread();

private:
    struct Dirt // what follow has to look at below one node
    {
        QVector<AttributeTreeChildChange> created; // rows that are missing
        QStringList gone;                          // rows that may be too many
        bool everything = false;
    };
    using DirtyNodes = QHash<QString, Dirt>;

    bool isComplete(const AttributeTreeNode& node, const QString& path) const;
    QVector<ChildInformation> shownChildren(const QString& path, bool complete) const;
    void noteForFilter(const QVector<AttributeTreeStructureChange>& changes);
    void collectAbove(const QString& parentPath, DirtyNodes& dirty);
    void collectGone(const AttributeTreeStructureChange& change, DirtyNodes& dirty);
    void collectCreated(const AttributeTreeStructureChange& change, DirtyNodes& dirty);
    void bringUpToDate(const QString& path, const Dirt& dirt);
    void reread(AttributeTreeItem& item);
    void setCount(const AttributeTreeNode& node, int now);

    AttributeTreeRowListener& listener;
    AttributeTreeRowEditor editor;
    std::shared_ptr<TreeInterface> tree;
    AttributeTreeFilter filter;
    std::unique_ptr<AttributeTreeItem> top;
    QSet<QString> stalePaths; // listed with other children than had been counted
};

} // namespace Utilities::ModelViews
