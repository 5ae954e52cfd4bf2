#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QRandomGenerator>
#include <QStringList>

#include <memory>

// Backends that all threads mount, edit, undo, move to and fro, save and close at once, while other programs
// write their files. What comes of it cannot be foretold, but tree and file must agree in the end.
class SharedFiles
{
public:
    using RepositoryInterface = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    // The formats, each of which one of the files has.
    static const QStringList& types();

    // Any number of these work at the same time, each on a thread of its own.
    SharedFiles(std::shared_ptr<RepositoryInterface> repository, QString folder, QRandomGenerator& random);

    void step();

    // One of the edits that a person makes, and undoes.
    void edit();

    void endListening();

    // When nobody works or listens any more: saves all and compares each with what another repository reads;
    // the faults that were found.
    QStringList compare() const;

private:
    QString anyBackend();
    QString anyPath();
    QString fileOf(const QString& backend) const;
    bool mount(RepositoryInterface& into, const QString& backend, int option) const;
    void editSteps();
    void useBackend();
    void useChanges();
    void transfer();
    void replace();
    void look();
    void listen();
    void writeFromOutside();
    bool settle(const QString& backend) const;
    static QStringList contentOf(RepositoryInterface& from, const QString& backend);

    const std::shared_ptr<RepositoryInterface> repository;
    const QString folder;
    QRandomGenerator& random;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RegistrationInterface> registration;
};
