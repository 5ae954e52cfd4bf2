#include "desk/changes/ChangesDock.h"

#include "desk/changes/HunkView.h"
#include "desk/common/LongWork.h"
#include "desk/common/RowCopy.h"
#include "desk/files/BackendFiles.h"
#include "host/Utilities/ModelViews/ToolTipText.h"
#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>
#include <set>

namespace Vantry {

using Utilities::ModelViews::Widgets::PlainLabel;

ChangesDock::ChangesDock(std::shared_ptr<Repository> attributes, BackendFiles& backendFiles, QWidget* parent)
    : QDockWidget(tr("Changes"), parent), repository(std::move(attributes)), files(backendFiles),
      feed(repository, files)
{
    setObjectName(QStringLiteral("changesDock"));
    connect(&files.getWatch(), &Utilities::UnsavedBackends::looked, this, &ChangesDock::look);
    connect(&feed, &ChangesFeed::found, this, &ChangesDock::take);
    connect(&feed, &ChangesFeed::failed, this, &ChangesDock::failed);
    hide();
}

void ChangesDock::setVisible(bool isVisible)
{
    if (isVisible && !pages)
        setUp();
    QDockWidget::setVisible(isVisible);
    if (isVisible)
        look();
}

void ChangesDock::showChanges()
{
    show();
    raise();
    rows->setFocus();
}

void ChangesDock::setUp()
{
    pages = new QStackedWidget;
    none = new PlainLabel(tr("Nothing is unsaved."));
    none->setAlignment(Qt::AlignCenter);
    pages->addWidget(none);
    setUpRows();
    auto* const left = new QWidget;
    auto* const column = new QVBoxLayout(left);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(rows, 1);
    auto* const buttons = new QHBoxLayout;
    saveRows = addButton(*buttons, "saveChanges", tr("&Save"),
                         tr("Save the selected changes, of a selected file or store all of them"),
                         &ChangesDock::save);
    dropRows =
        addButton(*buttons, "dropChanges", tr("&Drop"),
                  tr("Take back the selected changes, of a selected file or store all of them; Undo brings "
                     "them back"),
                  &ChangesDock::drop);
    mine = addButton(*buttons, "keepMine", tr("Keep &Mine"),
                     tr("Of the selected conflicts, what is unsaved stays"), &ChangesDock::keepMine);
    theirs = addButton(*buttons, "takeTheirs", tr("Take &Theirs"),
                       tr("Of the selected conflicts, what the other program saved stays"),
                       &ChangesDock::takeTheirs);
    base = addButton(*buttons, "takeBase", tr("Take &Base"),
                     tr("Of the selected conflicts, what both sides began with comes back"),
                     &ChangesDock::takeBase);
    buttons->addStretch();
    column->addLayout(buttons);

    auto* const parts = new QSplitter;
    parts->setObjectName(QStringLiteral("changesParts"));
    parts->setChildrenCollapsible(false);
    parts->addWidget(left);
    parts->addWidget(setUpHunks());
    pages->addWidget(parts);
    setWidget(pages);
    showState();
}

void ChangesDock::setUpRows()
{
    rows = new QTreeView;
    rows->setObjectName(QStringLiteral("changeRows"));
    rows->setAccessibleName(windowTitle());
    rows->setModel(&model);
    rows->setUniformRowHeights(true);
    rows->setAllColumnsShowFocus(true);
    addRowCopy(*rows);
    rows->setTextElideMode(Qt::ElideMiddle);
    QHeaderView* const header = rows->header();
    header->resizeSection(ChangesModel::PathColumn, 26 * fontMetrics().averageCharWidth() + 60);
    header->resizeSection(ChangesModel::StateColumn, 14 * fontMetrics().averageCharWidth());
    header->setStretchLastSection(false);
    for (const int column : {ChangesModel::FileColumn, ChangesModel::UnsavedColumn, ChangesModel::BaseColumn})
        header->setSectionResizeMode(column, QHeaderView::Stretch);
    connect(rows->selectionModel(), &QItemSelectionModel::currentChanged, this, &ChangesDock::showRow);
    connect(rows->selectionModel(), &QItemSelectionModel::selectionChanged, this, &ChangesDock::showState);
    rows->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(rows, &QTreeView::customContextMenuRequested, this, &ChangesDock::requestMenu);
    connect(rows, &QTreeView::activated, this, [this](const QModelIndex& row) {
        emit selectRequested(row.data(ChangesModel::PathRole).toString());
    });
}

void ChangesDock::requestMenu(const QPoint& position)
{
    const QModelIndex row = rows->indexAt(position);
    if (!row.isValid())
        return;
    emit selectRequested(row.data(ChangesModel::PathRole).toString());
    rows->setFocus();
    emit menuRequested(rows->viewport()->mapToGlobal(position));
}

QWidget* ChangesDock::setUpHunks()
{
    auto* const right = new QWidget;
    auto* const column = new QVBoxLayout(right);
    column->setContentsMargins(0, 0, 0, 0);
    hunks = new HunkView;
    column->addWidget(hunks, 1);
    auto* const buttons = new QHBoxLayout;
    saveHunk = addButton(*buttons, "saveHunks", tr("Save H&unk"),
                         tr("Write the lines of the hunks with the cursor or the selection into the file"),
                         &ChangesDock::saveHunks);
    dropHunk = addButton(*buttons, "dropHunks", tr("D&rop Hunk"),
                         tr("Take the lines of these hunks from the file; Undo brings them back"),
                         &ChangesDock::dropHunks);
    buttons->addStretch();
    column->addLayout(buttons);
    connect(hunks, &HunkView::choiceChanged, this, &ChangesDock::showState);
    return right;
}

QPushButton* ChangesDock::addButton(QHBoxLayout& row, const char* name, const QString& title,
                                    const QString& toolTip, void (ChangesDock::*action)())
{
    auto* const button = new QPushButton(title);
    button->setObjectName(QLatin1String(name));
    button->setAccessibleDescription(toolTip);
    button->setToolTip(Utilities::ModelViews::toolTipText(toolTip));
    connect(button, &QPushButton::clicked, this, action);
    row.addWidget(button);
    return button;
}

void ChangesDock::look()
{
    const QStringList names = files.getWatch().getNames();
    setWindowTitle(names.isEmpty() ? tr("Changes") : tr("Changes (%1)").arg(names.size()));
    if (isVisible() && pages)
        feed.look();
}

void ChangesDock::take(const std::vector<ChangedFile>& changed)
{
    const QString current = rows->currentIndex().data(ChangesModel::PathRole).toString();
    const QString backend = currentBackend();
    std::set<QString> closed;
    for (int row = 0; row < model.rowCount(); ++row) {
        if (!rows->isExpanded(model.index(row, 0)))
            closed.insert(model.index(row, 0).data(ChangesModel::PathRole).toString());
    }
    isTaking = true;
    model.setFiles(changed);
    for (int row = 0; row < model.rowCount(); ++row) {
        const QModelIndex file = model.index(row, 0);
        rows->setExpanded(file, closed.count(file.data(ChangesModel::PathRole).toString()) == 0);
    }
    const auto& shown = model.getFiles();
    const bool hasBase = std::any_of(shown.begin(), shown.end(), [](const ChangedFile& file) {
        return std::any_of(file.changes.begin(), file.changes.end(),
                           [](const auto& change) { return change.isConflict; });
    });
    rows->setColumnHidden(ChangesModel::BaseColumn, !hasBase);
    pages->setCurrentIndex(shown.empty() ? 0 : 1);
    QModelIndex row = model.find(current);
    if (!row.isValid())
        row = model.find(backend);
    rows->setCurrentIndex(row.isValid() ? row : model.index(0, 0));
    isTaking = false;
    if (rows->currentIndex().data(ChangesModel::PathRole).toString() == current)
        showDiff(); // with what is chosen of it
    else
        showRow();
}

QString ChangesDock::currentBackend() const
{
    return rows->currentIndex().data(ChangesModel::BackendRole).toString();
}

void ChangesDock::showRow()
{
    if (isTaking)
        return;
    showDiff();
    goToLines();
}

// Of the file that has the current row.
void ChangesDock::showDiff()
{
    const QString backend = currentBackend();
    const auto& shown = model.getFiles();
    const auto file = std::find_if(shown.begin(), shown.end(),
                                   [&backend](const ChangedFile& each) { return each.backend == backend; });
    hunks->showDiff(file == shown.end() ? QString() : file->diff);
    showState();
}

// That the current row has changed.
void ChangesDock::goToLines()
{
    const QString path = rows->currentIndex().data(ChangesModel::PathRole).toString();
    const auto texts = repository->getTextInterface();
    if (path == currentBackend() || !texts)
        return;
    placer.start([this, path, texts]() -> LatestTask::Result {
        FrameworkCore::AppConfig::Interfaces::TextPlace place;
        texts->locate(path, place);
        return [this, path, line = place.position.line] {
            if (line > 0 && path == rows->currentIndex().data(ChangesModel::PathRole).toString())
                hunks->goToLine(line);
        };
    });
}

void ChangesDock::showState()
{
    if (!dropHunk)
        return;
    const Chosen chosen = getChosen();
    const bool isAny = !chosen.backends.isEmpty() || !chosen.paths.isEmpty();
    saveRows->setEnabled(isAny);
    dropRows->setEnabled(isAny);
    mine->setEnabled(!chosen.conflicts.isEmpty());
    theirs->setEnabled(!chosen.conflicts.isEmpty());
    base->setEnabled(!chosen.conflicts.isEmpty());
    const int count = hunks->getChosen().size();
    saveHunk->setEnabled(count > 0);
    dropHunk->setEnabled(count > 0);
    saveHunk->setText(count > 1 ? tr("Save %1 H&unks").arg(count) : tr("Save H&unk"));
    dropHunk->setText(count > 1 ? tr("D&rop %1 Hunks").arg(count) : tr("D&rop Hunk"));
}

ChangesDock::Chosen ChangesDock::getChosen() const
{
    Chosen chosen;
    const auto selected = rows->selectionModel()->selectedRows();
    for (const QModelIndex& row : selected) {
        const QString path = row.data(ChangesModel::PathRole).toString();
        const QString backend = row.data(ChangesModel::BackendRole).toString();
        if (!row.parent().isValid())
            chosen.backends.append(backend);
        else
            chosen.paths[backend].append(path);
        if (row.data(ChangesModel::ConflictRole).toBool())
            chosen.conflicts.append(path);
    }
    for (const QString& backend : qAsConst(chosen.backends))
        chosen.paths.remove(backend);
    return chosen;
}

void ChangesDock::save()
{
    const Chosen chosen = getChosen();
    const QStringList refusals = refusalsOf(tr("Saving changes"), *repository, [&](const NoteOutcome& note) {
        for (auto paths = chosen.paths.begin(); paths != chosen.paths.end(); ++paths)
            note(repository->getChangesInterface()->saveChanges(paths.key(), paths.value()));
    });
    if (!chosen.backends.isEmpty())
        files.save(chosen.backends);
    finish(refusals);
}

void ChangesDock::drop()
{
    const Chosen chosen = getChosen();
    if (!chosen.backends.isEmpty() && !files.mayRevert(chosen.backends))
        return;
    finish(refusalsOfStep(tr("Drop changes"), *repository, [&](const NoteOutcome& note) {
        const auto changes = repository->getChangesInterface();
        for (auto paths = chosen.paths.begin(); paths != chosen.paths.end(); ++paths)
            note(changes->revertChanges(paths.key(), paths.value()));
        for (const QString& backend : chosen.backends)
            note(changes->revert(backend));
    }));
}

void ChangesDock::resolve(ConflictSide side)
{
    QStringList conflicts = getChosen().conflicts;
    std::sort(conflicts.begin(), conflicts.end());
    finish(refusalsOfStep(tr("Resolve conflicts"), *repository, [&](const NoteOutcome& note) {
        // A path is resolved with what is below it, so that what is below is there no more.
        for (const QString& path : qAsConst(conflicts)) {
            const Outcome outcome = repository->getChangesInterface()->resolveConflicts(path, side);
            if (outcome != FrameworkCore::AppConfig::NotFound)
                note(outcome);
        }
    }));
}

void ChangesDock::saveHunks()
{
    const QString backend = currentBackend();
    const QStringList chosen = hunks->getChosen();
    finish(refusalsOf(tr("Saving changes"), *repository, [&](const NoteOutcome& note) {
        note(repository->getChangesInterface()->saveHunks(backend, chosen));
    }));
}

void ChangesDock::dropHunks()
{
    const QString backend = currentBackend();
    const QStringList chosen = hunks->getChosen();
    finish(refusalsOfStep(tr("Drop changes"), *repository, [&](const NoteOutcome& note) {
        note(repository->getChangesInterface()->revertHunks(backend, chosen));
    }));
}

void ChangesDock::finish(const QStringList& refusals)
{
    for (const QString& reason : refusals)
        emit failed(reason);
    feed.forget();
    files.getWatch().look();
}

} // namespace Vantry
