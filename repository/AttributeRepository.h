#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"
#include "repository/RepositoryExport.h"

#include <functional>
#include <memory>

namespace Repository {

namespace Interfaces = FrameworkCore::AppConfig::Interfaces;

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
class VANTRY_REPOSITORY_EXPORT AttributeRepository : public Interfaces::RepositoryInterface
{
public:
    static std::shared_ptr<AttributeRepository> create(const RepositoryOptions& options = {});

    QStringList getBackendTypes() override;
    QString buildAttributePath(const QStringList& components) const override;
    std::shared_ptr<Interfaces::BackendInterface> getBackendInterface() override;
    std::shared_ptr<Interfaces::AttributeReaderInterface> getReaderInterface() override { return reader; }
    std::shared_ptr<Interfaces::AttributeWriterInterface> getWriterInterface() override { return writer; }
    std::shared_ptr<Interfaces::NotificationInterface> getNotificationInterface() override
    {
        return notifications;
    }
    std::shared_ptr<Interfaces::ValidationInterface> getValidationInterface() override { return validations; }
    std::shared_ptr<Interfaces::TreeInterface> getTreeInterface() override { return tree; }
    std::shared_ptr<Interfaces::TransferInterface> getTransferInterface() override { return transfer; }
    std::shared_ptr<Interfaces::ChangesInterface> getChangesInterface() override { return changes; }
    std::shared_ptr<Interfaces::HistoryInterface> getHistoryInterface() override { return history; }
    std::shared_ptr<Interfaces::SearchInterface> getSearchInterface() override { return search; }
    std::shared_ptr<Interfaces::TextInterface> getTextInterface() override { return texts; }

private:
    AttributeRepository(const std::shared_ptr<AttributeStore>& store, const RepositoryOptions& options);

    std::shared_ptr<BackendRegistry> backends;
    std::shared_ptr<Interfaces::AttributeReaderInterface> reader;
    std::shared_ptr<Interfaces::AttributeWriterInterface> writer;
    std::shared_ptr<Interfaces::NotificationInterface> notifications;
    std::shared_ptr<Interfaces::ValidationInterface> validations;
    std::shared_ptr<Interfaces::TreeInterface> tree;
    std::shared_ptr<Interfaces::TransferInterface> transfer;
    std::shared_ptr<Interfaces::ChangesInterface> changes;
    std::shared_ptr<Interfaces::HistoryInterface> history;
    std::shared_ptr<Interfaces::SearchInterface> search;
    std::shared_ptr<Interfaces::TextInterface> texts;
};

} // namespace Repository
