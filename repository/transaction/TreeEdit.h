#pragma once

#include "host/FrameworkCore/Values/Value.h"
#include "repository/backends/DocumentEdit.h"
#include "repository/common/PathBudget.h"
#include "repository/history/StepRecorder.h"
#include "repository/store/AttributeTree.h"
#include "repository/store/Delivery.h"
#include "repository/store/NewNodes.h"
#include "repository/transaction/FileHold.h"
#include "repository/transaction/NodeOrder.h"

#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <vector>

namespace Repository {

class SubtreeBuilder;

// One change of the tree's shape. It holds the structure lock until it ends or is told to release it; when it
// ends, the watchers are told what happened. One thread.
class TreeEdit
{
public:
    using AccessMode = FrameworkCore::AppConfig::AccessMode;
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using StatusCode = FrameworkCore::AppConfig::StatusCode;
    using UpdateResult = FrameworkCore::Notification::UpdateResult;

    explicit TreeEdit(AttributeTree& tree);

    // The files of the backends that the paths touch are held, too, until the lock is released; none for no
    // paths. The recorder, which may be null, is told what happens.
    TreeEdit(AttributeTree& tree, const QStringList& heldPaths, StepRecorder* recorder);

    ~TreeEdit();
    Q_DISABLE_COPY(TreeEdit)

    Node* find(QStringView path);

    // The node itself or the nearest one above it that there is.
    Node& nearest(QStringView path);

    // What there is at a path; whoever writes the attribute right now is waited for.
    NodeState stateOf(const QString& path);

    // The node of a path, made as a group with all that lead to it where it is missing. The empty path is the
    // top.
    Node& ensure(QStringView path);

    // The same for a child of a node.
    Node& ensureChild(Node& parent, const QString& path);

    // Where a new node comes among its siblings.
    enum class Placing { ByDocument, Last };

    // A new group of the tree alone, which is not filed yet; there is no node at its path.
    Node& addGroup(NewNodes& nodes, Node& parent, const QString& path, Placing placing);

    // The same for an attribute; the hash is that of its path.
    Node& addAttribute(NewNodes& nodes, Node& parent, const QString& path, quint32 hash, QVariant value,
                       AccessMode access, Placing placing);

    // Files such nodes. The attributes in the list, in its order, are what the watchers are told of.
    void file(NewNodes& nodes, const std::vector<Node*>& attributes);

    // The same for all that a builder has built.
    void file(SubtreeBuilder& builder);

    // Whether a new attribute may be made there with this value.
    Outcome acceptNew(const NodeIndex::Key& key, const Node* node, const Backend* backend,
                      const QVariant& value);

    // A new attribute, in memory or in the backend that its place belongs to.
    Outcome createAttribute(const QString& path, QVariant value, AccessMode access);

    void setAttribute(Node& node, const QVariant& value, AccessMode access, UpdateResult result);

    // Writes an attribute that exists, in memory or in its backend; the tree shows it by setAttribute.
    Outcome writeDocument(const Node& node, const QVariant& value, QVariant& accepted);

    // Takes the value from a node; it stays as a group.
    void makeGroup(Node& node);

    // Takes away nodes without asking and without touching their backend's document.
    void remove(Node& node);

    // Takes away a group that holds nothing any more, and those above it that only led to it.
    void prune(Node& node);

    // Takes the value from a node, and the node too when there is nothing below it.
    void takeAttribute(const QString& path);

    // Brings the backend's nodes into the order of its document when this edit ends, for changes that may
    // move nodes.
    void restoreOrder(Backend& backend) { order.restoreLater(backend); }

    // Lets writes of single values into the backend wait until this edit ends.
    DocumentEdit& editDocument(Backend& backend);

    AttributeTree& getTree() { return tree; }
    bool isRecorded() const { return recorder != nullptr; }

    // Ends the change of the tree; the watchers are still told at the end.
    void unlock();

private:
    Node& makeNode(const QString& path, const NodeIndex::Key& key, Node& parent);
    // The node is not filed yet.
    std::unique_ptr<Node> linkNode(const QString& path, Node& parent, Placing placing);
    // The shard's lock is held.
    static Node& fileNode(NodeIndex::Shard& shard, std::unique_ptr<Node> made, quint32 hash);
    // Attribute lock held, or not filed.
    void giveValue(Node& node, QVariant value, AccessMode access);
    const Rules* rulesOf(const NodeIndex::Shard& shard, const Node* node, QStringView path) const;

    // What a backend's node was before this edit came to it.
    struct Note
    {
        Backend* backend; // not owned
        QString path;
        NodeState before;
    };

    void note(const Node& node, const NodeState& before);
    void tellRecorder();

    AttributeTree& tree;
    NodeOrder order;
    StepRecorder* const recorder = nullptr; // not owned
    std::unique_ptr<FileHold> files;
    std::unique_lock<std::shared_mutex> lock;
    std::map<Backend*, DocumentEdit> documentEdits;
    std::vector<Delivery> deliveries;
    bool areAllTold = true; // otherwise memory was refused for some of them
    std::vector<Note> notes;
    PathBudget budget;         // of the nodes that it makes
    std::set<Backend*> hiding; // not owned; those in which what must not be read was touched
    std::vector<std::unique_ptr<Node>> removedNodes; // die when the locks are released
};

} // namespace Repository
