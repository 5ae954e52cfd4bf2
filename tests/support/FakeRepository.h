#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"
#include "tests/support/FakeTree.h"

#include <QList>

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

namespace TestSupport {

// A small repository in memory for tests of what needs the interfaces alone. It keeps their contract in
// the simplest way, plays the backends, and records what it is asked. Make it with std::make_shared: it is
// its own sub-interfaces, and lives as long as one of them is kept. Any thread.
class FakeRepository : public FrameworkCore::AppConfig::Interfaces::RepositoryInterface,
                       public FrameworkCore::AppConfig::Interfaces::BackendInterface,
                       public FrameworkCore::AppConfig::Interfaces::AttributeReaderInterface,
                       public FrameworkCore::AppConfig::Interfaces::AttributeWriterInterface,
                       public FrameworkCore::AppConfig::Interfaces::NotificationInterface,
                       public FrameworkCore::AppConfig::Interfaces::ValidationInterface,
                       public FrameworkCore::AppConfig::Interfaces::TreeInterface,
                       public std::enable_shared_from_this<FakeRepository>
{
public:
    using AccessMode = FrameworkCore::AppConfig::AccessMode;

    struct Write // one call of createAttribute or writeAttributeValue, refused ones too
    {
        QString path;
        QVariant value;
        int option = 0;  // of a write: the update points
        int access = -1; // of a creation; -1 for a write
    };

    struct BackendCreation // one call of createBackend
    {
        QString type;
        QString name;
        FrameworkCore::AppConfig::BackendConfiguration configuration;
        int option = 0;
    };

    explicit FakeRepository(const QString& separator = QStringLiteral("."));
    ~FakeRepository() override;

    // Preparation, as by another program: watchers are notified, nothing is recorded. set creates what is
    // missing and takes any type; remove takes away the node and all below it.
    void set(const QString& path, const QVariant& value, AccessMode access = AccessMode::ReadWrite);
    void remove(const QString& path) { removeTree(path); }
    void addBackend(const QString& name, const QString& rootPath, const QString& type,
                    const QString& description = QString());
    void refuseBackends(bool refuses)
    {
        refusesBackends = refuses;
    }                                                       // otherwise a created one's root is its name
    void setNextStatus(int status) { nextStatus = status; } // the next creation or write is refused with it

    QVariant getValue(const QString& path) const; // whatever the access; invalid when there is none
    bool contains(const QString& path) const { return getNodeInformation(path).isAttribute; }
    int getRegistrationCount() const; // those not ended
    QList<Write> getWrites() const { return copyOf(writes); }
    QList<BackendCreation> getBackendCreations() const { return copyOf(backendCreations); }
    QStringList getSavedBackends() const { return copyOf(savedBackends); } // names given to saveBackend

    QStringList getBackendTypes() override
    {
        return {QStringLiteral("ini"), QStringLiteral("json"), QStringLiteral("xml"), QStringLiteral("txt")};
    }
    QString buildAttributePath(const QStringList& components) const override { return tree.join(components); }
    std::shared_ptr<BackendInterface> getBackendInterface() override { return shared_from_this(); }
    std::shared_ptr<AttributeReaderInterface> getReaderInterface() override { return shared_from_this(); }
    std::shared_ptr<AttributeWriterInterface> getWriterInterface() override { return shared_from_this(); }
    std::shared_ptr<NotificationInterface> getNotificationInterface() override { return shared_from_this(); }
    std::shared_ptr<ValidationInterface> getValidationInterface() override { return shared_from_this(); }
    std::shared_ptr<TreeInterface> getTreeInterface() override { return shared_from_this(); }

    bool createBackend(const QString& type, const QString& name,
                       const FrameworkCore::AppConfig::BackendConfiguration& configuration,
                       const int& option) override;
    bool saveBackend(const QString& name) override;
    QStringList getBackendNames() override;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::BackendInformationInterface>
    getBackendInformation(const QString& name) override;

    int readAttributeValue(const QString& path, QVariant& value, const int& option) override;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::AttributeInterface>
    getAttribute(const QString& path) override;

    bool createAttribute(const QString& path, const QVariant& value, const int& option,
                         const int& access) override;
    int writeAttributeValue(const QString& path, const QVariant& value, const int& points) override;

    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RegistrationInterface>
    registerUpdateCallback(const QString& pathOrPattern,
                           const FrameworkCore::AppConfig::Interfaces::UpdateCallback& callback,
                           const int& points) override;

    QStringList getValidationNames() override { return {}; } // it knows none
    int addValidation(const QString&, const QString&) override { return 0; }

    QStringList getChildNames(const QString& path) const override;
    int getChildCount(const QString& path) const override { return getNodeInformation(path).childCount; }
    FrameworkCore::AppConfig::Interfaces::NodeInformation
    getNodeInformation(const QString& path) const override;
    QStringList findPaths(const FrameworkCore::AppConfig::Interfaces::PathSearch& search) const override;
    FrameworkCore::AppConfig::Outcome removeTree(const QString& path) override;

private:
    struct Update;
    class Backend;
    class Registration;
    using Backends = QList<std::shared_ptr<Backend>>;

    int store(const QString& path, const QVariant& value, int points);
    void tell(const QList<Update>& updates);

    template <typename List>
    List copyOf(const List& list) const
    {
        const std::lock_guard<std::mutex> guard(mutex);
        return list;
    }

    // With the lock held.
    QString internalPath(const char* parent, const char* name) const;
    std::shared_ptr<Backend> backendNamed(const QString& name) const;
    std::shared_ptr<Backend> backendOf(const QString& path) const;

    mutable std::mutex mutex;
    FakeTree tree;
    Backends backends;
    std::vector<std::shared_ptr<Registration>> registrations; // copied under the lock, unlike a QList
    QList<Write> writes;
    QList<BackendCreation> backendCreations;
    QStringList savedBackends;
    std::atomic<bool> refusesBackends{false};
    std::atomic<int> nextStatus{0};
};

} // namespace TestSupport
