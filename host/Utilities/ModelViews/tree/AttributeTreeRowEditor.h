#pragma once

#include "host/Utilities/ModelViews/tree/AttributeTreeItem.h"

#include <QStringList>

namespace Utilities::ModelViews {

// A node of the tree: a row of its parent's item, or the top.
struct AttributeTreeNode
{
    AttributeTreeItem* parentItem = nullptr; // not owned; none for the top
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
    virtual void beginReorder(const AttributeTreeNode& parent) = 0;
    // By row before, the row of each child now.
    virtual void endReorder(const AttributeTreeNode& parent, AttributeTreeItem& item,
                            const std::vector<int>& rows) = 0;
    virtual void foundStale() = 0; // what was signalled has changed meanwhile; follow must be called soon
};

// Changes the rows of listed nodes, telling the listener.
class AttributeTreeRowEditor
{
public:
    using ChildInformation = AttributeTreeItem::ChildInformation;

    explicit AttributeTreeRowEditor(AttributeTreeRowListener& rowListener) : listener(rowListener) {}

    void insert(AttributeTreeItem& item, int row, const QVector<ChildInformation>& children);
    void remove(AttributeTreeItem& item, const QStringList& names); // names of rows, each once

    // Makes the rows those of the wanted children, in their order. Rows that stay are kept.
    void arrange(AttributeTreeItem& item, const QVector<ChildInformation>& wanted);

private:
    void remove(AttributeTreeItem& item, int first, int last);
    void removeRows(AttributeTreeItem& item, const std::vector<int>& ascending);
    void order(AttributeTreeItem& item, const QVector<ChildInformation>& wanted);
    void removeUnwanted(AttributeTreeItem& item, int begin, int end, const QVector<ChildInformation>& wanted);

    AttributeTreeRowListener& listener;
};

} // namespace Utilities::ModelViews
