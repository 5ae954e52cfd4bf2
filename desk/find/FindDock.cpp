#include "desk/find/FindDock.h"

#include "desk/common/Confirmation.h"
#include "desk/common/ReadableText.h"
#include "desk/find/HitView.h"
#include "desk/find/HitWatch.h"
#include "desk/find/SearchForm.h"
#include "host/Utilities/GuiThread.h"
#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"
#include "host/Utilities/Worker.h"

#include <QLocale>
#include <QPointer>
#include <QPushButton>
#include <QSet>
#include <QVBoxLayout>

namespace Vantry {

using FrameworkCore::AppConfig::StatusCode;
using Utilities::ModelViews::Widgets::PlainLabel;

FindDock::FindDock(std::shared_ptr<Repository> attributes, BackendFiles& backendFiles,
                   SearchScope::SelectedPath selected, QWidget* parent)
    : QDockWidget(tr("Find"), parent), repository(std::move(attributes)), files(backendFiles),
      selectedPath(std::move(selected)), places(files, *repository), hits(*repository, places),
      run(repository->getSearchInterface())
{
    setObjectName(QStringLiteral("findDock"));
    constexpr int milliseconds = 120;
    typing.setInterval(milliseconds);
    typing.setSingleShot(true);
    connect(&typing, &QTimer::timeout, this, &FindDock::search);
    connect(&run, &SearchRun::found, this, &FindDock::show);
    connect(&run, &SearchRun::finished, this, &FindDock::finish);
    connect(&hits, &HitModel::checkedChanged, this, &FindDock::showButtons);
    hide();
}

void FindDock::setVisible(bool isVisible)
{
    if (isVisible && !form)
        setUp();
    QDockWidget::setVisible(isVisible);
}

void FindDock::setUp()
{
    form = new SearchForm(*new SearchScope(files, selectedPath));
    connect(form, &SearchForm::changed, this, &FindDock::scheduleSearch);
    connect(form, &SearchForm::entered, this, &FindDock::enterHits);
    addStatus();
    view = new HitView(hits);
    new HitWatch(repository, hits, *view);
    connect(view, &HitView::activated, this, &FindDock::choose);
    auto* const content = new QWidget;
    auto* const column = new QVBoxLayout(content);
    column->setContentsMargins(4, 4, 4, 0);
    column->setSpacing(4);
    column->addWidget(form);
    column->addWidget(view, 1);
    setWidget(content);
    showStatus();
}

void FindDock::addStatus()
{
    status = new PlainLabel;
    status->setObjectName(QStringLiteral("findStatus"));
    status->setWordWrap(true);
    stop = new QPushButton(tr("St&op"));
    stop->setObjectName(QStringLiteral("findStop"));
    connect(stop, &QPushButton::clicked, this, [this] {
        run.stop();
        lastNotice = tr("Stopped");
        showStatus();
    });
    replace = new QPushButton;
    replace->setObjectName(QStringLiteral("findReplace"));
    connect(replace, &QPushButton::clicked, this, &FindDock::replaceChecked);
    form->append(*status, 1);
    form->append(*stop);
    form->append(*replace);
}

void FindDock::beginFinding()
{
    begin(false);
}

void FindDock::beginReplacing()
{
    begin(true);
}

void FindDock::begin(bool isReplacing)
{
    QDockWidget::show();
    raise();
    form->setReplacing(isReplacing);
    form->beginEntry();
}

void FindDock::scheduleSearch()
{
    typing.start();
    showButtons(); // nothing is replaced by what it was before
}

void FindDock::search()
{
    SearchRun::SearchQuery query = form->getQuery();
    if (query.replacement && query.roots.isEmpty())
        query.roots = files.getOpened(); // what is in no file, as the page that is shown, cannot be undone
    const auto fault = repository->getSearchInterface()->findFault(query);
    form->showFault(fault);
    isFaulty = fault.has_value();
    run.stop();
    places.clear();
    lastNotice.clear();
    hits.clear(form->isReplacing());
    view->showReplacements(form->isReplacing());
    if (!fault && !query.text.isEmpty())
        run.start(query);
    showStatus();
}

void FindDock::show(const QVector<SearchRun::SearchHit>& found)
{
    hits.add(found);
    if (view->hasFocus() && !view->currentIndex().isValid()) // Return came before them
        view->moveBy(1);
    if (hits.rowCount() == HitModel::mostRows) {
        run.stop();
        lastNotice = tr("more are not listed");
    }
    showStatus();
}

void FindDock::finish(const Outcome& outcome)
{
    if (!outcome.ok())
        lastNotice = readableText(outcome, *repository);
    showStatus();
}

// Those of the text as it is now.
void FindDock::enterHits()
{
    if (typing.isActive()) {
        typing.stop();
        search();
    }
    form->remember();
    if (!view->currentIndex().isValid())
        view->moveBy(1);
    view->setFocus();
}

void FindDock::choose(const QModelIndex& row)
{
    if (form)
        form->remember();
    emit chosen(hits.getHit(row.row()).path);
}

void FindDock::goBy(int step)
{
    const int row = view ? view->moveBy(step) : -1;
    if (row >= 0)
        emit chosen(hits.getHit(row).path);
}

void FindDock::showStatus()
{
    const int count = hits.rowCount();
    QStringList parts;
    if (form->getQuery().text.isEmpty())
        parts.append(tr("Type what is to be found"));
    else if (count > 0)
        parts.append(tr("%1 found").arg(QLocale().toString(count)));
    else if (!run.isRunning() && lastNotice.isEmpty() && !isFaulty)
        parts.append(tr("Nothing found"));
    if (run.isRunning())
        parts.append(tr("searching ..."));
    if (!lastNotice.isEmpty())
        parts.append(lastNotice);
    status->setText(parts.join(QStringLiteral("; ")));
    showButtons();
}

void FindDock::showButtons()
{
    if (!form)
        return;
    const int count = hits.getCheckedCount();
    stop->setVisible(run.isRunning());
    replace->setVisible(form->isReplacing());
    replace->setEnabled(count > 0 && !typing.isActive() && !run.isRunning() && !replacing.valid());
    replace->setText(count == 1 ? tr("&Replace 1 Value")
                                : tr("&Replace %1 Values").arg(QLocale().toString(count)));
}

bool FindDock::mayReplace()
{
    constexpr int mostUnasked = 10;
    const auto checked = hits.getChecked();
    if (checked.size() <= mostUnasked)
        return true;
    QSet<QString> backends;
    for (const auto& each : checked)
        backends.insert(repository->getTreeInterface()->getNodeInformation(each.path).backend);
    const QString values = QLocale().toString(checked.size());
    const QString question =
        backends.size() == 1
            ? tr("Replace %1 values in one file?").arg(values)
            : tr("Replace %1 values in %2 files?").arg(values, QLocale().toString(backends.size()));
    return Confirmation(Confirmation::Act::Replace, tr("Replace"), question, window()).ask(tr("&Replace"));
}

// On another thread: a file may be large, or be saved just now.
void FindDock::replaceChecked()
{
    if (!mayReplace())
        return;
    form->remember();
    const SearchRun::SearchQuery query = form->getQuery();
    const QString name = tr("Replace '%1' by '%2'")
                             .arg(Outcome::shortened(query.text), Outcome::shortened(*query.replacement));
    QString failure;
    const QPointer<FindDock> self(this);
    replacing = Utilities::startWorker(
        [self, name, search = repository->getSearchInterface(), checked = hits.getChecked()] {
            Outcome outcome;
            try {
                outcome = search->replace(checked, name);
            } catch (...) {
                outcome = Outcome(StatusCode::NotEnoughMemory, Utilities::currentFailure());
            }
            Utilities::postToGuiThread([self, outcome, count = checked.size()] {
                if (self)
                    self->finishReplacing(outcome, count);
            });
        },
        failure);
    if (!replacing.valid())
        finish(Outcome(StatusCode::NotEnoughMemory, failure));
    showButtons();
}

void FindDock::finishReplacing(const Outcome& outcome, int count)
{
    replacing = {};
    if (!outcome.ok())
        return finish(outcome);
    search();
    lastNotice =
        count == 1 ? tr("1 value replaced") : tr("%1 values replaced").arg(QLocale().toString(count));
    showStatus();
}

} // namespace Vantry
