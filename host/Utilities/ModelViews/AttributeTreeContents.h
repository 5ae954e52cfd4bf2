#pragma once

#include "host/FrameworkCore/AppConfig/TreeInterface.h"
#include "host/Utilities/ModelViews/AttributeTreeFilter.h"
#include "host/Utilities/ModelViews/AttributeTreeInbox.h"
#include "host/Utilities/ModelViews/AttributeTreeItem.h"

#include <QHash>
#include <QSet>

#include <memory>
#include <optional>

namespace Utilities::ModelViews {

// A node of the tree: a row of its parent's item, or the top.
struct AttributeTreeNode
{
    AttributeTreeItem* holder = nullptr; // not owned; none for the top
    int row = -1;
};

// Hears of the rows before and after they change, as a model must tell it. It may look at the contents
// meanwhile, not change them.
class AttributeTreeRowListener
{
public:
    virtual ~AttributeTreeRowListener() = default;

    virtual void beginInsert(const AttributeTreeNode& parent, int first, int last) = 0;
    virtual void endInsert() = 0;
    virtual void beginRemove(const AttributeTreeNode& parent, int first, int last) = 0;
    virtual void endRemove() = 0;
    virtual void foundStale() = 0; // what was announced has changed meanwhile; follow must be called soon
};

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

    void follow(const QVector<AttributeTreeStructureChange>& changes);
    void reread();

private:
    struct Dirt // what follow has to look at below one node
    {
        QStringList created;
        bool everything = false;
    };
    using DirtyNodes = QHash<QString, Dirt>;

    bool isComplete(const AttributeTreeNode& node, const QString& path) const;
    QVector<ChildInformation> shownChildren(const QString& path, bool complete) const;
    void noteForFilter(const QVector<AttributeTreeStructureChange>& changes);
    void collect(const AttributeTreeStructureChange& change, DirtyNodes& dirty);
    void bringUpToDate(const QString& path, const Dirt& dirt);
    void reread(AttributeTreeItem& item);
    void setCount(const AttributeTreeNode& node, int now);
    void arrange(AttributeTreeItem& item, const QVector<ChildInformation>& wanted);
    void removeUnwanted(AttributeTreeItem& item, int begin, int end, const QVector<ChildInformation>& wanted);
    void insert(AttributeTreeItem& item, int row, const QVector<ChildInformation>& children);
    void remove(AttributeTreeItem& item, int first, int last);

    AttributeTreeRowListener& listener;
    std::shared_ptr<TreeInterface> tree;
    AttributeTreeFilter filter;
    std::unique_ptr<AttributeTreeItem> top;
    QSet<QString> stalePaths; // listed with other children than had been counted
};

} // namespace Utilities::ModelViews
