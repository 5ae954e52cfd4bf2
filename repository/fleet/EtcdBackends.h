#pragma once

#include "repository/backends/BackendKind.h"

#include <QHash>

#include <memory>
#include <mutex>
#include <vector>

namespace Repository {

class StoreSession;
struct AttributeTree;

// Opens parts of a distributed store, etcd, as backends, and keeps their connections.
class EtcdBackends : public BackendKind
{
public:
    EtcdBackends(std::shared_ptr<AttributeTree> tree, Observer observer);
    ~EtcdBackends() override;

    QStringList getTypes() const override { return {QStringLiteral("etcd")}; }
    bool hasType(const QString& type) const override { return getTypes().contains(type); }
    QString toLocation(const QString& given) const override;
    bool isSamePlace(const QString& location, const QString& other) const override;

    // Waits until the store is loaded, but on the thread of the windows, where it only begins.
    Outcome open(const Backend::Description& description, const Mount& mount) override;
    void forget(const Backend& backend) override;

private:
    const std::shared_ptr<AttributeTree> tree;
    const Observer observer;
    std::mutex mutex;                                              // guards what follows
    QHash<const Backend*, std::shared_ptr<StoreSession>> sessions; // of backends that are open
    std::vector<std::shared_ptr<StoreSession>> ending;             // of those that were closed
};

} // namespace Repository
