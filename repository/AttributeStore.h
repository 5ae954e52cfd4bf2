#pragma once

#include "host/FrameworkCore/AppConfig/AttributeInterface.h"
#include "host/FrameworkCore/AppConfig/NotificationInterface.h"
#include "host/FrameworkCore/AppConfig/Outcome.h"
#include "host/FrameworkCore/AppConfig/TreeInterface.h"
#include "repository/History.h"
#include "repository/NodeIndex.h"
#include "repository/PatternIndex.h"

#include <QString>
#include <QVariant>

#include <memory>
#include <optional>
#include <shared_mutex>
#include <vector>

namespace Repository {

class Backend;

// The tree of attributes in memory. Any thread; every operation may be called from inside a callback.
//
// Two kinds of locks guard it. The structure lock guards the tree's shape: it is held for reading while nodes
// are walked, and for writing while nodes come and go, which TreeEdit does. A shard's lock guards the
// attributes of its nodes, and a node found under it stays alive while it is held; with the structure lock
// held, nodes are found without it. Locks are taken in the order structure, shard, backend, patterns; never
// two shards at once; and none is held while a callback or the log is called.
class AttributeStore : public std::enable_shared_from_this<AttributeStore>
{
public:
    using AccessMode = FrameworkCore::AppConfig::AccessMode;
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using StatusCode = FrameworkCore::AppConfig::StatusCode;
    using UpdateResult = FrameworkCore::Notification::UpdateResult;
    using NodeInformation = FrameworkCore::AppConfig::Interfaces::NodeInformation;

    // The option of create that writes to an attribute which exists already; any other refuses it.
    static constexpr int createOrWrite = 3;

    // The bound is that of history, in bytes.
    explicit AttributeStore(std::size_t historyBound = History::defaultBound);
    ~AttributeStore();

    StatusCode read(const QString& path, QVariant& value);
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::AttributeInterface>
    getAttribute(const QString& path);

    Outcome create(const QString& path, const QVariant& value, int option, int access);
    Outcome write(const QString& path, const QVariant& value, int points);

    // Null when the path or the callback does not serve; logged.
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RegistrationInterface>
    addRegistration(const QString& pathOrPattern,
                    const FrameworkCore::AppConfig::Interfaces::UpdateCallback& callback, int points);

    // The registration is filed there, and must not be used afterwards.
    void removeRegistration(const QString& pathOrPattern, Registration& registration);

    Outcome addRule(const QString& path, const QString& name);
    QStringList getRules(const QString& path); // by name, as they were added

    QStringList getChildNames(const QString& path);
    int getChildCount(const QString& path);
    QStringList getLastChildNames(const QString& path, int count);
    QVector<FrameworkCore::AppConfig::Interfaces::ChildInformation> getChildren(const QString& path,
                                                                                const QString& beginning);
    NodeInformation getNodeInformation(const QString& path);
    QStringList findPaths(const FrameworkCore::AppConfig::Interfaces::PathSearch& search);
    Outcome removeTree(const QString& path);

    // Sets an attribute of the repository's own, which callers may only read; an invalid value makes it null.
    void publish(const QString& path, const QVariant& value);

    // Gives the backend its root and the entries of its document.
    Outcome mount(const std::shared_ptr<Backend>& backend);

    // Closes the backend and takes it out of the tree; groups that lead to backends mounted below it stay.
    Outcome unmount(const std::shared_ptr<Backend>& backend, bool discardChanges);

    // Makes the tree below a backend's root what its document holds by now.
    void showDocument(Backend& backend);

    History& getHistory() { return history; }

    // In the order of their creation. One that is closed meanwhile can still be used, and refuses edits and
    // saves.
    std::vector<std::shared_ptr<Backend>> getBackends();

private:
    friend class StepReplay;
    friend class SubtreeTransfer;
    friend class TreeEdit;

    Outcome refuseUnknown(const QString& path, const QVariant& value);
    static Outcome checkCreation(const QString& path, bool isTypeKnown, int access);
    // Gives what the attribute would hold after a write of the value.
    static Outcome accept(const Node& node, const QVariant& value, QVariant& accepted);

    // Nothing while the node's backend is being reshaped.
    static std::optional<Outcome> store(Node& node, const QVariant& value, QVariant& previous);

    RegistrationPointer takeExact(const QString& path, const NodeIndex::Key& key,
                                  const Registration& registration);

    // structure lock held; the empty path is the top
    const Node* nodeOf(QStringView path);
    bool hidesValues(QStringView path); // of an attribute that is there, or would be

    std::shared_mutex structure;
    NodeIndex index;
    PatternIndex patterns;
    Node top{QString()};                            // holds the top-level nodes; not in the index
    std::vector<std::shared_ptr<Backend>> backends; // guarded by structure
    History history;
};

} // namespace Repository
