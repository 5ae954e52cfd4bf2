#pragma once

#include "desk/files/KeptChanges.h"
#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QMap>

#include <memory>

namespace Vantry {

// Puts kept changes into the file when it is open again, as edits. A change whose place holds neither what it
// held then nor what it was changed to is a conflict. GUI thread.
class KeptChangesMerge
{
public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;
    using UnsavedChange = FrameworkCore::AppConfig::Interfaces::UnsavedChange;
    using ConflictSide = FrameworkCore::AppConfig::Interfaces::ConflictSide;
    using Choices = QMap<QString, ConflictSide>; // by path in the tree

    // The changes are compared with what the backend holds now.
    KeptChangesMerge(std::shared_ptr<Repository> repository, QString backend, KeptChanges::Changes changes);

    // With paths in the tree; before is what there is now, after what was kept.
    QVector<UnsavedChange> getConflicts() const;

    // Makes the changes and, of the conflicts, those chosen to be Mine. Gives what is left to be kept: the
    // conflicts without a choice, and what the repository refuses.
    KeptChanges::Changes apply(const Choices& choices);

    // Why the repository has refused some.
    const QStringList& getReasons() const { return reasons; }

private:
    enum class State { Done, Free, Conflict };

    QString pathOf(const UnsavedChange& change) const;
    bool isThere(const QString& path) const;
    QVariant valueAt(const QString& path) const;
    State stateOf(const UnsavedChange& change) const;
    bool make(const UnsavedChange& change);

    std::shared_ptr<Repository> repository;
    const QString backend;
    const KeptChanges::Changes changes;
    QVector<State> states; // of each change
    QStringList reasons;
};

} // namespace Vantry
