#pragma once

#include "desk/common/LatestTask.h"
#include "desk/files/BackendFiles.h"
#include "desk/files/FileMounter.h"
#include "desk/session/SessionState.h"

#include <QElapsedTimer>
#include <QHash>
#include <QLockFile>
#include <QPointer>
#include <QSet>
#include <QTimer>

#include <memory>

class QMainWindow;
class QTreeView;

namespace Utilities::ModelViews {
class AdvancedAttributeModel;
}

namespace Vantry {

// Writes down what the window has open, how it shows that, and what is unsaved, as it changes, so that the
// next start brings it back, also after the program or the machine went down. Of several desks at once the
// first one does so. GUI thread.
class SessionKeeper : public QObject
{
    Q_OBJECT

public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    // All outlive it. The window has its pages by now.
    SessionKeeper(std::shared_ptr<Repository> repository, BackendFiles& files, FileMounter& mounter,
                  QMainWindow& window);
    ~SessionKeeper() override;

    // Opens what the last session had open. False when that was nothing.
    bool restore();

    // The changes that a session left unsaved which did not come to its end.
    QVector<KeptChanges::Entry> takeUnsaved() const;

    // From now on; a last time, with nothing left unsaved, before the window closes.
    void follow();
    void end();

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
    void noteChange();
    void showAsBefore();
    void save();
    SessionState gather() const;
    QVector<SessionState::File> filesToOpen() const;
    void lookAtUnsaved();
    void keep(const QVector<Found>& found);
    void forget(const QString& backend);

    const std::shared_ptr<Repository> repository;
    BackendFiles& files;
    FileMounter& mounter;
    QPointer<QTreeView> tree; // of the page of attributes
    QPointer<Utilities::ModelViews::AdvancedAttributeModel> monitor;
    std::unique_ptr<QLockFile> lock; // null while another desk has it
    QSet<QString> expanded;
    SessionState restored; // until it is shown
    QStringList backends;  // as they were written
    QByteArray written;
    QTimer timer; // runs when something is to be written
    QHash<QString, Kept> kept;
    LatestTask keeping;
    QElapsedTimer sinceKept;
    qint64 patience; // between two looks at what is unsaved, in ms
};

} // namespace Vantry
