#pragma once

#include "host/FrameworkCore/Values/Value.h"
#include "repository/backends/DocumentEdit.h"
#include "repository/common/PathBudget.h"
#include "repository/history/StepRecorder.h"
#include "repository/store/AttributeTree.h"
#include "repository/store/Delivery.h"
#include "repository/store/NewNodes.h"
#include "repository/transaction/FileHold.h"

#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <vector>

namespace Repository {

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

    // Whether a new attribute may be made there with this value.
    Outcome acceptNew(const NodeIndex::Key& key, const Node* node, const Backend* backend,
                      const QVariant& value);

    // A new attribute, in memory or in the backend that its place belongs to.
    Outcome createAttribute(const QString& path, QVariant value, AccessMode access);

    void setAttribute(Node& node, const QVariant& value, AccessMode access, UpdateResult result);

    // Writes an attribute that exists, in memory or in its backend; the tree shows it by setAttribute.
    Outcome writeDocument(const Node& node, const QVariant& value, QVariant& accepted);

    // Takes away a node and all below it.
    Outcome removeTree(const QString& path);

    // The two halves of removeTree. The first changes no more than the document, and can be refused.
    Outcome removeFromDocument(Node& node, bool& othersMove);
    void removeFromTree(Node& node, bool othersMove);

    // Takes the value from a node; it stays as a group.
    void makeGroup(Node& node);

    // Takes away nodes without asking and without touching their backend's document.
    void remove(Node& node);

    // Takes away a group that holds nothing any more, and those above it that only led to it.
    void prune(Node& node);

    // Takes the value from a node, and the node too when there is nothing below it.
    void takeAttribute(const QString& path);

    // Makes the tree below the backend's root what its document holds. Nested backends are left alone.
    void showDocument(Backend& backend);

    // The same where no more than these changes has come to the document since the tree showed it.
    void showChanges(Backend& backend, const DocumentChanges& changes);

    // Gives the backend its root, which holds nothing yet, and shows its document there.
    void mount(Backend& backend);

    // Takes the backend's nodes out of the tree. Those that lead to nested backends stay as groups of
    // whatever the root lies in.
    void unmount(const Backend& backend);

    // Brings the backend's nodes into the order of its document when this edit ends, for changes that may
    // move nodes.
    void restoreOrder(Backend& backend) { unordered.insert(&backend); }

    // Lets writes of single values into the backend wait until this edit ends.
    DocumentEdit& editDocument(Backend& backend);

    // Ends the change of the tree; the watchers are still told at the end.
    void unlock();

private:
    Node& makeNode(const QString& path, const NodeIndex::Key& key, Node& parent);
    // The node is not filed yet.
    std::unique_ptr<Node> linkNode(const QString& path, Node& parent, Placing placing);
    std::size_t placeFor(const QString& path, const Node& parent);
    bool isInPlace(const Node& node);
    // The shard's lock is held.
    static Node& fileNode(NodeIndex::Shard& shard, std::unique_ptr<Node> made, quint32 hash);
    // Attribute lock held, or not filed.
    void giveValue(Node& node, QVariant value, AccessMode access);
    std::vector<Node*> subtree(Node& node, const Backend* onlyBackend) const;
    void hideEntry(Node& node);
    void showEntry(Backend& backend, const QString& path, const FrameworkCore::Values::Value& value);
    void buildDocument(Backend& backend, Node& root);
    void orderNodes(Backend& backend);
    void tellOfOrder(const Node& parent);
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
    StepRecorder* const recorder = nullptr; // not owned
    std::unique_ptr<FileHold> files;
    std::unique_lock<std::shared_mutex> lock;
    std::map<Backend*, DocumentEdit> documentEdits;
    std::vector<Delivery> deliveries;
    bool areAllTold = true; // otherwise memory was refused for some of them
    bool areAllOrdered = true;
    std::vector<Note> notes;
    PathBudget budget;            // of the nodes that it makes
    std::set<Backend*> hiding;    // not owned; those in which what must not be read was touched
    std::set<Backend*> unordered; // not owned
    std::vector<std::unique_ptr<Node>> removedNodes; // die when the locks are released
};

} // namespace Repository
