#pragma once

#include "host/FrameworkCore/AppConfig/AttributeInterface.h"
#include "host/FrameworkCore/AppConfig/Outcome.h"
#include "repository/history/History.h"
#include "repository/store/AttributeTree.h"

#include <QString>
#include <QVariant>

#include <memory>
#include <optional>

namespace Repository {

// Reads, creates, writes and removes attributes of a tree, which it owns with its history. Any thread; every
// operation may be called from inside a callback.
class AttributeStore
{
public:
    using AccessMode = FrameworkCore::AppConfig::AccessMode;
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using StatusCode = FrameworkCore::AppConfig::StatusCode;
    using UpdateResult = FrameworkCore::Notification::UpdateResult;

    // The option of create that writes to an attribute which exists already; any other refuses it.
    static constexpr int createOrWrite = 3;

    // The bound is that of history, in bytes.
    explicit AttributeStore(std::size_t historyBound = History::defaultBound);
    ~AttributeStore();
    Q_DISABLE_COPY(AttributeStore)

    StatusCode read(const QString& path, QVariant& value);
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::AttributeInterface>
    getAttribute(const QString& path);

    Outcome create(const QString& path, const QVariant& value, int option, int access);
    Outcome write(const QString& path, const QVariant& value, int points);
    Outcome removeTree(const QString& path);

    // Handles of registrations outlive the store, but not the tree.
    const std::shared_ptr<AttributeTree>& getTree() const { return tree; }
    History& getHistory() { return history; }

private:
    Outcome refuseUnknown(const QString& path, const QVariant& value);
    static Outcome checkCreation(const QString& path, bool isTypeKnown, int access);

    // Nothing while the node's backend is being edited otherwise.
    static std::optional<Outcome> store(Node& node, const QVariant& value, QVariant& previous);

    const std::shared_ptr<AttributeTree> tree;
    History history;
};

} // namespace Repository
