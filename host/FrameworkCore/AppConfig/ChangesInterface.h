#pragma once

#include "host/FrameworkCore/AppConfig/Outcome.h"
#include "host/FrameworkCore/CoreExport.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

namespace FrameworkCore::AppConfig::Interfaces {

// One difference between a backend's file, as it was read or saved last, and its attributes.
struct UnsavedChange
{
    enum class Kind { Changed, Created, Removed };

    QString path;
    Kind kind = Kind::Changed;
    QVariant before;         // in the file; invalid for a created one, and in a write-only backend
    QVariant after;          // in the tree; invalid for a removed one, and in a write-only backend
    bool isConflict = false; // the file has changed it, too, since it was edited; before is what it holds now
    QVariant base;           // of a conflict: what both began with; invalid where that was nothing
};

// What a conflict is resolved to: the value of the tree, the one of the file, or the one that both began
// with.
enum class ConflictSide { Mine, Theirs, Base };

// What the files of backends do not hold yet. Any thread; refusals are logged with their reason.
class VANTRY_CORE_EXPORT ChangesInterface
{
public:
    virtual ~ChangesInterface() = default;

    // Backends with unsaved changes, in the order of their creation. Cheap enough to be asked often.
    virtual QStringList getEditedBackends() const = 0;

    // The changes of a backend in the order of its file; removed ones first. A file that is gone while it is
    // mounted is one conflict at the backend's root. Its cost grows with the size of the file.
    virtual QVector<UnsavedChange> getUnsavedChanges(const QString& backend) const = 0;

    // Gives what saving would change in the file, as a unified diff with three lines of context; empty
    // without changes and for a write-only backend.
    virtual Outcome getUnsavedDiff(const QString& backend, QString& diff) const = 0;

    // Gives the node and all below it the values that its file holds, which also resolves their conflicts; a
    // backend's root reverts the whole backend. Watchers are notified.
    virtual Outcome revert(const QString& path) = 0;

    // Resolves the conflicts at and below the path. Mine keeps the edits, which the next save writes; Theirs
    // reverts them; Base replaces them by what both sides began with, or by a removal where that was nothing.
    // NotFound if nothing there is in conflict.
    virtual Outcome resolveConflicts(const QString& path, ConflictSide side) = 0;

    // Some changes of a backend alone, those at and below these paths. Reverting gives up these, as revert
    // does, in one step of undo. Saving writes these into the file, and all others stay unsaved; what another
    // program has changed is merged first. A repository that does not override them does nothing.
    virtual Outcome revertChanges(const QString& /*backend*/, const QStringList& /*paths*/)
    {
        return {BackendFailure, QStringLiteral("this repository reverts no single changes")};
    }
    virtual Outcome saveChanges(const QString& /*backend*/, const QStringList& /*paths*/)
    {
        return {BackendFailure, QStringLiteral("this repository saves no single changes")};
    }

    // The same for hunks of its unsaved diff, each given as its text from "@@" on. Reverted are their lines,
    // byte for byte. Refused when a hunk is not in the diff any more, or the file would not be readable with
    // so much of the diff.
    virtual Outcome revertHunks(const QString& /*backend*/, const QStringList& /*hunks*/)
    {
        return {BackendFailure, QStringLiteral("this repository reverts no single hunks")};
    }
    virtual Outcome saveHunks(const QString& /*backend*/, const QStringList& /*hunks*/)
    {
        return {BackendFailure, QStringLiteral("this repository saves no single hunks")};
    }

    // Another number after every change of what is unsaved of a backend, as when its file is gone or back; 0
    // for an unknown one. Cheap enough to be asked often.
    virtual quint64 getChangesRevision(const QString& /*backend*/) const { return 0; }
};

} // namespace FrameworkCore::AppConfig::Interfaces
