#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <memory>

namespace Repository {

class AttributeStore;

// The attribute repository of a process: the store behind the interfaces of the contract. Any thread.
class AttributeRepository : public FrameworkCore::AppConfig::Interfaces::RepositoryInterface
{
public:
    // History takes so many bytes at most.
    static std::shared_ptr<AttributeRepository> create(std::size_t historyBound = std::size_t(64) << 20);
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
    explicit AttributeRepository(const std::shared_ptr<AttributeStore>& store);

    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::BackendInterface> backends;
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
