#pragma once

#include "desk/common/LatestTask.h"
#include "desk/files/BackendFiles.h"
#include "desk/files/FileMounter.h"
#include "desk/session/SessionState.h"
#include "host/Utilities/UnsavedBackends.h"

#include <QElapsedTimer>
#include <QHash>
#include <QLockFile>
#include <QTimer>

#include <functional>
#include <memory>

namespace Vantry {

// Writes down what is open, how the windows show that, and what is unsaved, as it changes, so that the next
// start brings it back, also after the program or the machine went down. Of several desks at once the first
// one is brought back; what is unsaved is kept by each. GUI thread.
class SessionKeeper : public QObject
{
    Q_OBJECT

public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;
    using Views = std::function<QVector<SessionState::View>()>; // of all windows, as of now

    SessionKeeper(std::shared_ptr<Repository> repository, FileMounter& mounter, Views views);
    ~SessionKeeper() override;

    // Opens what the last session had open; before, prepare makes its windows, and learns how they
    // showed that. False when nothing was open.
    bool restore(const std::function<void(const QVector<SessionState::View>&)>& prepare);

    // The changes that sessions left unsaved which did not come to their end.
    QVector<KeptChanges::Entry> takeUnsaved() const;

    // From now on; a last time, with nothing left unsaved, before the windows close.
    void follow();
    void end();

    void noteChange(); // of what a window shows

signals:
    void restored(); // all that was to be opened is

private:
    // The unsaved changes of a backend as they are kept.
    struct Kept
    {
        KeptChanges::Entry entry;
        QString diff;
    };

    // What a worker found in a backend.
    struct Found
    {
        QString backend;
        QString diff;
        KeptChanges::Changes changes;
    };

    void look();
    void finishRestoring();
    void save();
    QVector<SessionState::File> filesToOpen() const;
    void lookAtUnsaved();
    void keep(const QVector<Found>& found);
    void forget(const QString& backend);

    const std::shared_ptr<Repository> repository;
    FileMounter& mounter;
    const Views views;
    std::unique_ptr<QLockFile> lock;                  // null while another desk has it
    std::unique_ptr<KeptChanges::RunningPlace> place; // null where there is none
    Utilities::UnsavedBackends unsaved;
    bool isRestoring = false;
    bool isFollowing = false;
    QStringList toLock;   // once they are restored
    QStringList backends; // as they were written
    QStringList locked;
    QByteArray written;
    QTimer timer; // runs when something is to be written
    QHash<QString, Kept> kept;
    LatestTask keeping;
    QElapsedTimer sinceKept;
    qint64 patience; // between two looks at what is unsaved, in ms
};

} // namespace Vantry
