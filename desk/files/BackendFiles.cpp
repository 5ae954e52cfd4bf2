#include "desk/files/BackendFiles.h"

#include "desk/common/CellEdit.h"
#include "desk/common/Confirmation.h"
#include "desk/common/LongWork.h"
#include "desk/common/ReadableText.h"
#include "desk/common/WaitCursor.h"
#include "desk/files/ConflictDialog.h"
#include "desk/files/FileNames.h"
#include "desk/files/KeptChangesMerge.h"
#include "desk/files/UnsavedChangesDialog.h"
#include "host/FrameworkCore/AppConfig/AttributePath.h"
#include "host/Shared/Logging/LogStreamProvider.h"
#include "host/Utilities/ModelViews/Widgets/AttributeTreeModelInputDialogs.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace Vantry {

using Utilities::ModelViews::Widgets::AttributeTreeModelInputDialogs;

BackendFiles::BackendFiles(std::shared_ptr<Repository> attributes, QWidget& parentWindow)
    : repository(std::move(attributes)), window(parentWindow), unsaved(repository->getChangesInterface())
{
}

QStringList BackendFiles::getOpened() const
{
    QStringList opened;
    QStringList folders;
    const QStringList all = getBackends();
    for (const QString& backend : all) {
        const bool isOfFolder = std::any_of(folders.begin(), folders.end(), [&](const QString& folder) {
            return FrameworkCore::AppConfig::isAtOrBelow(backend, folder);
        });
        if (isOfFolder)
            continue;
        opened.append(backend);
        const auto information = repository->getBackendInterface()->getBackendInformation(backend);
        if (information && information->getBackendType() == QLatin1String("folder"))
            folders.append(backend);
    }
    return opened;
}

QStringList BackendFiles::getUnsaved()
{
    endCellEdit(window);
    unsaved.look();
    return unsaved.getNames();
}

QString BackendFiles::locationOf(const QString& backend, Repository& repository)
{
    const auto information = repository.getBackendInterface()->getBackendInformation(backend);
    const QString location = information ? information->getBackendLocation() : QString();
    return location.isEmpty() ? backend : location;
}

QStringList BackendFiles::getFileNames(const QStringList& backends) const
{
    const QStringList all = getBackends();
    QStringList locations;
    for (const QString& backend : all)
        locations.append(getLocation(backend));
    const QStringList distinct = distinctFileNames(locations);
    QHash<QString, QString> namesByBackend;
    for (int number = 0; number < all.size(); ++number)
        namesByBackend.insert(all[number], distinct[number]);
    QStringList names;
    for (const QString& backend : backends)
        names.append(namesByBackend.value(backend, backend));
    return names;
}

QStringList BackendFiles::getLabels(const QStringList& backends) const
{
    QStringList labels = getFileNames(backends);
    const QStringList opened = getOpened();
    const QSet<QString> own(opened.begin(), opened.end()); // the names of others come from their files
    for (int number = 0; number < backends.size(); ++number) {
        if (labels[number] != backends[number] && own.contains(backends[number]))
            labels[number] = QStringLiteral("%1 (%2)").arg(labels[number], backends[number]);
    }
    return labels;
}

bool BackendFiles::save(const QStringList& backends)
{
    bool areAllSaved = true;
    QStringList refusals;
    for (const QString& backend : backends)
        areAllSaved = saveOne(backend, refusals) && areAllSaved;
    unsaved.look();
    warn(tr("Not Saved"), refusals, tr("What is unsaved stays open: save it again once this is mended."));
    return areAllSaved;
}

bool BackendFiles::saveOne(const QString& backend, QStringList& refusals)
{
    while (true) {
        const QStringList reasons =
            refusalsOf(tr("Saving %1").arg(getLabel(backend)), {backend},
                       [this](const QString& name) { return repository->getBackendInterface()->save(name); });
        if (reasons.isEmpty())
            return true;
        const auto conflicts = conflictsOf(backend);
        if (conflicts.isEmpty()) {
            refusals += reasons;
            return false;
        }
        if (!resolve(backend, conflicts))
            return false;
    }
}

// Why some of the backends refused the operation.
QStringList BackendFiles::refusalsOf(const QString& title, const QStringList& backends,
                                     const Operation& operation) const
{
    return Vantry::refusalsOf(title, *repository, [&](const NoteOutcome& note) {
        for (const QString& backend : backends)
            note(operation(backend));
    });
}

QVector<BackendFiles::UnsavedChange> BackendFiles::conflictsOf(const QString& backend) const
{
    QVector<UnsavedChange> changes;
    Vantry::refusalsOf(tr("Comparing %1").arg(getLabel(backend)), *repository, [&](const NoteOutcome&) {
        changes = repository->getChangesInterface()->getUnsavedChanges(backend);
    });
    const auto isNone = [](const UnsavedChange& change) { return !change.isConflict; };
    changes.erase(std::remove_if(changes.begin(), changes.end(), isNone), changes.end());
    return changes;
}

// False when the person does not want to choose now.
bool BackendFiles::resolve(const QString& backend, const QVector<UnsavedChange>& conflicts)
{
    ConflictDialog dialog(ConflictDialog::Purpose::Save, backend, getLabel(backend), conflicts, &window);
    if (dialog.exec() != QDialog::Accepted)
        return false;

    const QStringList reasons = resolve(backend, dialog.getChoices());
    warn(tr("Not Resolved"), reasons);
    return true;
}

// Why some of the choices were refused.
QStringList BackendFiles::resolve(const QString& backend, const QMap<QString, ConflictSide>& choices)
{
    const QString name = tr("Resolve conflicts of %1").arg(getFileName(backend));
    return refusalsOfStep(name, *repository, [&](const NoteOutcome& note) {
        const auto resolveAt = [&](const QString& path, ConflictSide side) {
            const Outcome outcome = repository->getChangesInterface()->resolveConflicts(path, side);
            if (outcome != FrameworkCore::AppConfig::NotFound) // it is resolved with another
                note(outcome);
        };
        const ConflictSide first = choices.first();
        const auto isFirst = [first](ConflictSide side) { return side == first; };
        if (std::all_of(choices.begin(), choices.end(), isFirst)) {
            resolveAt(backend, first);
            return;
        }
        // A path is resolved with what is below it, so that what is below must go first.
        const QStringList paths = choices.keys();
        for (auto path = paths.rbegin(); path != paths.rend(); ++path)
            resolveAt(*path, choices[*path]);
    });
}

bool BackendFiles::mayRevert(const QStringList& backends)
{
    const QString question = tr("Give up the unsaved changes of these files?\n\n%1")
                                 .arg(getLabels(backends).join(QLatin1Char('\n')));
    return Confirmation(Confirmation::Act::Revert, tr("Revert"), question, &window).ask(tr("&Revert"));
}

void BackendFiles::revert(const QStringList& backends)
{
    if (!mayRevert(backends))
        return;
    const QString title = tr("Revert %1").arg(getFileNames(backends).join(QLatin1String(", ")));
    const QStringList reasons = refusalsOfStep(title, *repository, [&](const NoteOutcome& note) {
        for (const QString& backend : backends)
            note(repository->getChangesInterface()->revert(backend));
    });
    unsaved.look();
    warn(tr("Not Reverted"), reasons);
}

void BackendFiles::reload(const QStringList& backends)
{
    endCellEdit(window);
    const QString title = tr("Reloading %1").arg(getLabels(backends).join(QLatin1String(", ")));
    const QStringList reasons = refusalsOf(title, backends, [this](const QString& name) {
        return repository->getBackendInterface()->reloadBackend(name);
    });
    unsaved.look();
    warn(tr("Not Reloaded"), reasons);
}

void BackendFiles::close(const QStringList& backends)
{
    QStringList edited = getUnsaved();
    // A folder takes its files with it.
    const auto stays = [&backends](const QString& backend) {
        return std::none_of(backends.begin(), backends.end(), [&backend](const QString& closed) {
            return FrameworkCore::AppConfig::isAtOrBelow(backend, closed);
        });
    };
    edited.erase(std::remove_if(edited.begin(), edited.end(), stays), edited.end());
    Fate fate = Fate::Safe;
    if (edited.size() == 1)
        fate = settle(edited, tr("%1 holds changes that are not saved. Save them before it is closed?")
                                  .arg(getLabel(edited.first())));
    else if (!edited.isEmpty())
        fate =
            settle(edited, tr("%1 files hold changes that are not saved. Save them before they are closed?")
                               .arg(edited.size()));
    if (fate == Fate::Kept)
        return;
    const QString title = tr("Closing %1").arg(getLabels(backends).join(QLatin1String(", ")));
    const QStringList reasons = refusalsOf(title, backends, [&](const QString& name) {
        const auto present = repository->getBackendInterface();
        if (!present->getBackendInformation(name)) // it went with its folder
            return Outcome();
        const bool isEdited = std::any_of(edited.begin(), edited.end(), [&name](const QString& backend) {
            return FrameworkCore::AppConfig::isAtOrBelow(backend, name);
        });
        return present->closeBackend(name, fate == Fate::Discarded && isEdited);
    });
    unsaved.look();
    warn(tr("Not Closed"), reasons);
}

bool BackendFiles::mayBeLost()
{
    const QStringList backends = getUnsaved();
    if (backends.isEmpty())
        return true;
    const QString question =
        backends.size() == 1
            ? tr("%1 holds changes that are not saved. Save them before the window closes?")
                  .arg(getLabel(backends.first()))
            : tr("%1 files hold changes that are not saved. Save them before the window closes?")
                  .arg(backends.size());
    return settle(backends, question) != Fate::Kept;
}

void BackendFiles::keepUnsaved()
{
    using namespace Shared::Logging;
    const LogMessageContext context({}, -1, {}, QStringLiteral("Desk"), {}, LogMessageContext::NoFlag);
    const QStringList backends = getUnsaved();
    for (const QString& backend : backends) {
        // Empty for a file whose values are not to be shown.
        QString diff;
        repository->getChangesInterface()->getUnsavedDiff(backend, diff);
        QString text =
            tr("The changes of %1 were not saved: the program was told to end").arg(getLabel(backend));
        QString error;
        const QString place =
            diff.isEmpty() ? QString()
                           : KeptChanges::keep(getLocation(backend), diff,
                                               changesOf(*repository->getChangesInterface(), backend), error);
        if (!place.isEmpty())
            text += tr(". They are kept in %1").arg(place);
        else if (!error.isEmpty())
            text += tr(", and they are lost: %1").arg(error);
        LogStreamProvider(context).handleMessageInternal(LogMessageType::Failure, {}) << text;
    }
}

KeptChanges::Changes BackendFiles::changesOf(const ChangesInterface& interface, const QString& backend)
{
    KeptChanges::Changes changes = interface.getUnsavedChanges(backend);
    for (UnsavedChange& change : changes)
        change.path.remove(0, backend.size() + (change.path == backend ? 0 : 1));
    return changes;
}

void BackendFiles::applyKept(const KeptChanges::Entry& entry, const QString& backend)
{
    endCellEdit(window);
    QString error;
    const KeptChanges::Changes changes = KeptChanges::readChanges(entry, error);
    if (!error.isEmpty()) {
        warn(tr("Not Applied"), {error});
        return;
    }
    KeptChangesMerge merge(repository, backend, changes);
    KeptChangesMerge::Choices choices;
    const auto conflicts = merge.getConflicts();
    if (!conflicts.isEmpty()) {
        ConflictDialog dialog(ConflictDialog::Purpose::ApplyKept, backend, getLabel(backend), conflicts,
                              &window);
        if (dialog.exec() == QDialog::Accepted)
            choices = dialog.getChoices();
    }
    KeptChanges::Changes left;
    {
        const WaitCursor cursor;
        const auto history = repository->getHistoryInterface();
        const auto step =
            history ? history->beginStep(tr("Apply kept changes of %1").arg(getFileName(backend))) : nullptr;
        left = merge.apply(choices);
    }
    unsaved.look();
    error = KeptChanges::replace(entry, left);
    QStringList told;
    if (!left.isEmpty())
        told << tr("%1 of %2 changes were not put into %3 and stay kept.")
                    .arg(QString::number(left.size()), QString::number(changes.size()), getLabel(backend))
             << merge.getReasons();
    if (!error.isEmpty())
        told.prepend(error);
    warn(tr("Not All Applied"), told);
}

BackendFiles::Fate BackendFiles::settle(const QStringList& unsavedBackends, const QString& question)
{
    std::vector<UnsavedChangesDialog::Edited> edited;
    const QStringList labels = getLabels(unsavedBackends);
    for (int number = 0; number < labels.size(); ++number)
        edited.push_back({unsavedBackends[number], labels[number]});
    UnsavedChangesDialog dialog(question, edited, repository->getChangesInterface(), &window);
    switch (dialog.ask()) {
    case UnsavedChangesDialog::Answer::Save:
        return save(unsavedBackends) ? Fate::Safe : Fate::Kept;
    case UnsavedChangesDialog::Answer::Discard:
        return Fate::Discarded;
    case UnsavedChangesDialog::Answer::Cancel:
        break;
    }
    return Fate::Kept;
}

void BackendFiles::warn(const QString& title, const QStringList& reasons, const QString& advice)
{
    constexpr int most = 8;
    QStringList told = reasons.mid(0, most);
    if (reasons.size() > most)
        told.append(tr("The log tells of %1 more.").arg(reasons.size() - most));
    if (!advice.isEmpty())
        told.append(advice);
    if (!reasons.isEmpty())
        AttributeTreeModelInputDialogs::ShowWarningMessage(&window, title, told.join(QLatin1String("\n\n")));
}

} // namespace Vantry
