#pragma once

#include "host/FrameworkCore/AppConfig/TransferInterface.h"

#include <memory>

namespace Repository {

class AttributeStore;

// Copies, moves, exports and imports subtrees for callers; see TransferInterface. Any thread.
class SubtreeTransfer : public FrameworkCore::AppConfig::Interfaces::TransferInterface
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using TransferReport = FrameworkCore::AppConfig::Interfaces::TransferReport;

    explicit SubtreeTransfer(std::shared_ptr<AttributeStore> attributes) : store(std::move(attributes)) {}

    Outcome copyTree(const QString& from, const QString& to) override;
    Outcome moveTree(const QString& from, const QString& to) override;
    Outcome exportTree(const QString& path, const QString& type, QByteArray& text) override;
    Outcome importTree(const QString& path, const QString& type, const QByteArray& text) override;

    Outcome copyTree(const QString& from, const QString& to, TransferReport& report) override;
    Outcome exportTree(const QString& path, const QString& type, QByteArray& text,
                       TransferReport& report) override;
    Outcome importTree(const QString& path, const QString& type, const QByteArray& text,
                       TransferReport& report) override;

private:
    std::shared_ptr<AttributeStore> store;
};

} // namespace Repository
