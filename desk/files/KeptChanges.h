#pragma once

#include "host/FrameworkCore/AppConfig/ChangesInterface.h"

#include <QDateTime>
#include <QVector>

#include <memory>

class QLockFile;

namespace Vantry {

// What was unsaved when the program ended and nobody could be asked: for each file its changes, and a diff to
// read, in the folder in which a person's programs keep their state. GUI thread.
class KeptChanges
{
public:
    // With paths below the root of the file; the root's own is empty.
    using Changes = QVector<FrameworkCore::AppConfig::Interfaces::UnsavedChange>;

    struct Entry
    {
        QString diffFile;
        QString file; // that was edited; empty when only the diff could be kept
        QDateTime time;
    };

    // A folder for what this program keeps while it runs, in case of a crash, apart from those of others.
    // Null when it cannot be made.
    struct RunningPlace
    {
        static std::unique_ptr<RunningPlace> take();
        ~RunningPlace();

        QString folder;
        std::unique_ptr<QLockFile> lock; // held as long as the program has the place
    };

    // Gives where the diff is, on the disk; when that fails nothing, and the reason. Without a place of a
    // running program it is for whoever starts next.
    static QString keep(const QString& file, const QString& diff, const Changes& changes, QString& error,
                        const RunningPlace* place = nullptr);

    // Puts what programs that have ended kept while they ran, perhaps in this place, to all the rest, and
    // gives that.
    static QVector<Entry> takeOver(const RunningPlace& place);

    static QVector<Entry> getEntries(); // the oldest first

    static QString readDiff(const Entry& entry, QString& error);
    static Changes readChanges(const Entry& entry, QString& error);

    // Keeps only these changes of the entry; without any it is removed. Gives why it failed.
    static QString replace(const Entry& entry, const Changes& changes);
};

} // namespace Vantry
