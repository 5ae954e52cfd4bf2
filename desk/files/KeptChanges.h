#pragma once

#include "host/FrameworkCore/AppConfig/ChangesInterface.h"

#include <QDateTime>
#include <QVector>

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

    // What a running program keeps in case that it ends is apart, until the next one takes it over.
    enum class Place { Ended, Running };

    // Gives where the diff is, on the disk; when that fails nothing, and the reason.
    static QString keep(const QString& file, const QString& diff, const Changes& changes, QString& error,
                        Place place = Place::Ended);

    // Puts what a program kept while it ran to all the rest, and gives that.
    static QVector<Entry> takeOver();

    static QVector<Entry> getEntries(); // the oldest first

    static QString readDiff(const Entry& entry, QString& error);
    static Changes readChanges(const Entry& entry, QString& error);

    // Keeps only these changes of the entry; without any it is removed. Gives why it failed.
    static QString replace(const Entry& entry, const Changes& changes);
};

} // namespace Vantry
