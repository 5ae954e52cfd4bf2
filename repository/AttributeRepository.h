#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <functional>
#include <memory>

namespace Repository {

class AttributeStore;
class BackendRegistry;

// What a program chooses when it makes its repository.
struct RepositoryOptions
{
    // Whether changes that other programs make to mounted files are brought in as they happen, by a thread
    // that starts with the first mount, or only by reloading and saving.
    bool watchesFiles = true;

    // Hears what comes of work that no caller waits for, as that a file which another program has written
    // cannot be read; it is logged, too. Any thread.
    std::function<void(const FrameworkCore::AppConfig::Outcome& outcome)> observer = {};

    // History takes so many bytes at most.
    std::size_t historyBound = std::size_t(64) << 20;
};

// The attribute repository of a process: the interfaces of the contract over one store. Any thread.
class AttributeRepository : public FrameworkCore::AppConfig::Interfaces::RepositoryInterface
{
public:
    static std::shared_ptr<AttributeRepository> create(const RepositoryOptions& options = {});
    ~AttributeRepository() override;

    QStringList getBackendTypes() override;
    QString buildAttributePath(const QStringList& components) const override;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::BackendInterface> getBackendInterface() override;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::AttributeReaderInterface>
    getReaderInterface() override;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::AttributeWriterInterface>
    getWriterInterface() override;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::NotificationInterface>
    getNotificationInterface() override;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::ValidationInterface>
    getValidationInterface() override;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::TreeInterface> getTreeInterface() override;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::TransferInterface> getTransferInterface() override;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::ChangesInterface> getChangesInterface() override;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::HistoryInterface> getHistoryInterface() override;

private:
    AttributeRepository(const std::shared_ptr<AttributeStore>& store, const RepositoryOptions& options);

    std::shared_ptr<BackendRegistry> backends;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::AttributeReaderInterface> reader;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::AttributeWriterInterface> writer;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::NotificationInterface> notifications;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::ValidationInterface> validations;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::TreeInterface> tree;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::TransferInterface> transfer;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::ChangesInterface> changes;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::HistoryInterface> history;
};

} // namespace Repository
