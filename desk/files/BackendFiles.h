#pragma once

#include "desk/files/KeptChanges.h"
#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"
#include "host/Utilities/UnsavedBackends.h"

#include <QMap>
#include <QObject>

#include <memory>

class QWidget;

namespace Vantry {

// What a person does with the open files as wholes: save, revert, reload, close. It asks where something
// would be lost or two programs have changed the same, and tells what failed. GUI thread.
class BackendFiles : public QObject
{
    Q_OBJECT

public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;
    using ChangesInterface = FrameworkCore::AppConfig::Interfaces::ChangesInterface;
    using Outcome = FrameworkCore::AppConfig::Outcome;

    // Dialogs belong to the window, which outlives this.
    BackendFiles(std::shared_ptr<Repository> repository, QWidget& window);

    QStringList getBackends() const { return repository->getBackendInterface()->getBackendNames(); }
    QStringList getOpened() const; // without those that came with a folder
    QStringList getUnsaved();      // as of now, with what is being typed into a cell
    Utilities::UnsavedBackends& getWatch() { return unsaved; }

    // For people: the backend's file with as much of its folder as distinguishes it from the others that are
    // open; that with the backend's name, unless it came with a folder; and its whole path. One after the
    // other for the backends.
    QStringList getFileNames(const QStringList& backends) const;
    QString getFileName(const QString& backend) const { return getFileNames({backend}).first(); }
    QStringList getLabels(const QStringList& backends) const;
    QString getLabel(const QString& backend) const { return getLabels({backend}).first(); }
    QString getLocation(const QString& backend) const { return locationOf(backend, *repository); }

    // The file of a backend; where it has none, its name. Any thread.
    static QString locationOf(const QString& backend, Repository& repository);

    // True when all are saved.
    bool save(const QStringList& backends);

    void revert(const QStringList& backends);

    // Asks whether their unsaved changes are to be given up.
    bool mayRevert(const QStringList& backends);
    void reload(const QStringList& backends);
    void close(const QStringList& backends);

    // Asks about what is unsaved in any backend. False when it is to be kept, and so the window.
    bool mayBeLost();

    // What is unsaved in a backend, as KeptChanges have it. Any thread.
    static KeptChanges::Changes changesOf(const ChangesInterface& changes, const QString& backend);

    // Keeps what is unsaved as KeptChanges, when nobody is there to be asked; the log tells where.
    void keepUnsaved();

    // Puts what was kept into its file, which is open, as unsaved edits and one step of undo; asks where the
    // file now holds something else. What cannot be put in stays kept.
    void applyKept(const KeptChanges::Entry& entry, const QString& backend);

private:
    using UnsavedChange = FrameworkCore::AppConfig::Interfaces::UnsavedChange;
    using ConflictSide = FrameworkCore::AppConfig::Interfaces::ConflictSide;

    enum class Fate { Safe, Discarded, Kept };

    Fate settle(const QStringList& unsavedBackends, const QString& question);
    using Operation = std::function<Outcome(const QString& backend)>;
    QStringList refusalsOf(const QString& title, const QStringList& backends,
                           const Operation& operation) const;

    bool saveOne(const QString& backend, QStringList& refusals);
    QVector<UnsavedChange> conflictsOf(const QString& backend) const;
    bool resolve(const QString& backend, const QVector<UnsavedChange>& conflicts);
    QStringList resolve(const QString& backend, const QMap<QString, ConflictSide>& choices);
    void warn(const QString& title, const QStringList& reasons, const QString& advice = {});

    std::shared_ptr<Repository> repository;
    QWidget& window;
    Utilities::UnsavedBackends unsaved;
};

} // namespace Vantry
