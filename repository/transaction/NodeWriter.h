#pragma once

#include "repository/common/PathBudget.h"
#include "repository/store/AttributeTree.h"
#include "repository/store/Delivery.h"
#include "repository/store/NewNodes.h"
#include "repository/transaction/BeforeImages.h"
#include "repository/transaction/NodeOrder.h"

#include <functional>
#include <memory>
#include <vector>

namespace Repository {

class SubtreeBuilder;

// Makes, changes and removes nodes of the tree, without their backends' documents. The structure lock is held
// until finish. One thread.
class NodeWriter
{
public:
    using AccessMode = FrameworkCore::AppConfig::AccessMode;
    using UpdateResult = FrameworkCore::Notification::UpdateResult;

    // With images, what nodes were before is kept for history.
    NodeWriter(AttributeTree& tree, bool keepsImages);
    Q_DISABLE_COPY(NodeWriter)

    AttributeTree& getTree() const { return tree; }
    Node* find(QStringView path) const;

    // The node itself or the nearest one above it that there is.
    Node& nearest(QStringView path) const;

    // The node of a path, made as a group with all that lead to it where it is missing. The empty path is the
    // top.
    Node& ensure(QStringView path);

    // The same for a child of a node.
    Node& ensureChild(Node& parent, const QString& path);

    // Makes an attribute where there is no node. The ancestor is the nearest node above it.
    void create(const QString& path, const NodeIndex::Key& key, Node& ancestor, const QVariant& value,
                AccessMode access);

    // Where a new node comes among its siblings.
    enum class Placing { ByDocument, Last };

    // A new group of the tree alone, which is not filed yet; there is no node at its path.
    Node& addGroup(NewNodes& nodes, Node& parent, const QString& path, Placing placing);

    // The same for an attribute; the hash is that of its path.
    Node& addAttribute(NewNodes& nodes, Node& parent, const QString& path, quint32 hash,
                       const QVariant& value, AccessMode access, Placing placing);

    // Files such nodes. The watchers hear of the attributes in the list, in its order.
    void file(NewNodes& nodes, const std::vector<Node*>& attributes);

    // The same for all that a builder has built.
    void file(SubtreeBuilder& builder);

    // Gives a node a value, or another one, which the watchers hear of as a change of that kind.
    void setAttribute(Node& node, const QVariant& value, AccessMode access,
                      UpdateResult kind = UpdateResult::Changed);

    // Changes the text of an attribute in its place, so that one that grows is not copied each time. Null
    // stands for an empty one.
    void editText(Node& node, const std::function<void(QString& text)>& edit);

    // Takes the value from a node; it stays as a group.
    void makeGroup(Node& node);

    // The same of one that may have lost its value in its backend, as a null does to what comes below it.
    void followValue(Node& node);

    // Takes away a node and all below it.
    void remove(Node& node);

    // Takes away a group that holds nothing any more, and those above it that only led to it.
    void prune(Node& node);

    // Takes the value from a node, and the node too when there is nothing below it.
    void takeAttribute(const QString& path);

    // The watchers of values that are set from here on hear of that at these points only.
    void notifyAt(int updatePoints) { points = updatePoints; }

    NodeOrder& getOrder() { return order; }
    BeforeImages* getImages() { return images.get(); } // null without

    // The last thing before the structure lock is released: brings nodes into their order.
    void finish() { order.restoreAll(deliveries); }

    // When all locks are released: removed nodes go, and the watchers are called.
    void deliver();

private:
    Node& makeNode(const QString& path, const NodeIndex::Key& key, Node& parent);
    // The node is not filed yet.
    NodePointer linkNode(const QString& path, quint32 hash, Node& parent, Placing placing);
    // The shard's lock is held.
    static Node& fileNode(NodeIndex::Shard& shard, NodePointer made);
    // Attribute lock held, or not filed.
    void giveValue(Node& node, const QVariant& value, AccessMode access);

    AttributeTree& tree;
    NodeOrder order;
    std::unique_ptr<BeforeImages> images;
    std::vector<Delivery> deliveries;
    int points = Delivery::allPoints;
    bool areAllDelivered = true; // otherwise memory was refused for some of them
    PathBudget budget;           // of the nodes that it makes
    std::vector<NodePointer> removedNodes;
};

} // namespace Repository
