#pragma once

#include "repository/AttributeRepository.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <memory>
#include <mutex>

// One machine of a fleet: a repository of its own that has mounted a store at "m". Any thread.
class FleetMachine
{
public:
    using AccessMode = FrameworkCore::AppConfig::AccessMode;
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using UpdateResult = FrameworkCore::Notification::UpdateResult;
    using UnsavedChange = FrameworkCore::AppConfig::Interfaces::UnsavedChange;

    explicit FleetMachine(const QString& location, AccessMode access = AccessMode::ReadWrite);
    ~FleetMachine();
    Q_DISABLE_COPY(FleetMachine)

    const Outcome& getMounted() const { return mounted; }
    Repository::AttributeRepository& getRepository() const { return *repository; }
    std::shared_ptr<Repository::AttributeRepository> shareRepository() const { return repository; }

    Outcome create(const QString& path, const QVariant& value);
    Outcome write(const QString& path, const QVariant& value);
    Outcome remove(const QString& path);
    Outcome save();

    QVariant read(const QString& path) const;
    bool exists(const QString& path) const;
    QStringList paths() const; // of all attributes below "m", sorted
    QVector<UnsavedChange> unsaved() const;
    QString description() const; // of the backend, which says how it is and who is there

    // From now on, what callbacks are told of these attributes: "path = value" or "path removed".
    void listen(const QString& pattern);
    QStringList getHeard() const;

private:
    std::shared_ptr<Repository::AttributeRepository> repository;
    Outcome mounted;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RegistrationInterface> registration;
    mutable std::mutex mutex; // guards what follows
    QStringList heard;
};
