#include "desk/text/TextDock.h"

#include "desk/common/ReadableText.h"
#include "desk/places/PlaceWatch.h"
#include "desk/text/TextRowDelegate.h"
#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTreeView>

#include <algorithm>

namespace Vantry {

using Utilities::ModelViews::Widgets::PlainLabel;

TextDock::TextDock(std::shared_ptr<Repository> attributes, PlaceWatch& placeWatch, QWidget* parent)
    : QDockWidget(tr("Text"), parent), repository(std::move(attributes)), watch(placeWatch)
{
    setObjectName(QStringLiteral("textDock"));
    connect(&watch, &PlaceWatch::selected, this, [this] {
        look();
        showValue();
    });
    connect(&reader, &LatestTask::failed, this,
            [this](const QString& reason) { take(backend, nullptr, reason); });
    hide();
}

void TextDock::setVisible(bool isVisible)
{
    if (isVisible && !pages)
        setUp();
    QDockWidget::setVisible(isVisible);
    if (isVisible)
        look();
}

void TextDock::showText()
{
    show();
    raise();
    view->setFocus();
}

void TextDock::setUp()
{
    pages = new QStackedWidget;
    note = new PlainLabel;
    note->setAlignment(Qt::AlignCenter);
    note->setWordWrap(true);
    pages->addWidget(note);
    view = new QTreeView;
    view->setObjectName(QStringLiteral("textRows"));
    view->setAccessibleName(windowTitle());
    view->setModel(&model);
    view->setRootIsDecorated(false);
    view->setItemsExpandable(false);
    view->setUniformRowHeights(true);
    view->setHeaderHidden(true);
    view->setAllColumnsShowFocus(true);
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    view->header()->setStretchLastSection(false);
    view->header()->setMinimumSectionSize(1);
    delegate = new TextRowDelegate(model, view);
    view->setItemDelegateForColumn(TextModel::TextColumn, delegate);
    view->viewport()->installEventFilter(this);
    auto* const copyAction = new QAction(tr("&Copy"), view);
    copyAction->setShortcut(QKeySequence::Copy);
    copyAction->setShortcutContext(Qt::WidgetShortcut);
    connect(copyAction, &QAction::triggered, this, &TextDock::copySelected);
    view->addAction(copyAction);
    view->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(view, &QTreeView::customContextMenuRequested, this, &TextDock::requestMenu);
    connect(view, &QTreeView::activated, this, [this](const QModelIndex& row) { selectAt(row.row(), 0); });
    pages->addWidget(view);
    setWidget(pages);
}

void TextDock::look()
{
    if (!isVisible() || !pages)
        return;
    const auto texts = repository->getTextInterface();
    const QString wanted = watch.getBackend();
    if (wanted.isEmpty() || !texts) {
        backend.clear();
        take(backend, nullptr, tr("Select an attribute of a file to see its text."));
        return;
    }
    const quint64 present = texts->getRevision(wanted);
    const bool isEdited = repository->getChangesInterface()->getEditedBackends().contains(wanted);
    if (wanted == backend && present == revision && isEdited == isUnsaved)
        return;
    backend = wanted;
    revision = present;
    isUnsaved = isEdited;
    read();
}

void TextDock::read()
{
    reader.start([this, wanted = backend, attributes = repository]() -> LatestTask::Result {
        TextRows::BackendText text;
        const auto outcome = attributes->getTextInterface()->getText(wanted, text);
        const auto rows = outcome.ok() ? std::make_shared<const TextRows>(std::move(text)) : nullptr;
        return [this, wanted, rows, refusal = readableText(outcome, *attributes)] {
            take(wanted, rows, refusal);
        };
    });
}

void TextDock::take(const QString& wanted, const std::shared_ptr<const TextRows>& rows,
                    const QString& refusal)
{
    if (wanted != backend)
        return;
    const QModelIndex top = view->indexAt({0, 0});
    model.setRows(rows);
    note->setText(refusal);
    pages->setCurrentWidget(rows ? static_cast<QWidget*>(view) : note);
    if (!rows)
        return;
    const QFontMetrics metrics(view->font());
    const int digits = QString::number(rows->getLineCount()).size();
    view->header()->resizeSection(TextModel::LineColumn,
                                  (digits + 2) * metrics.horizontalAdvance(QLatin1Char('0')));
    view->header()->resizeSection(TextModel::TextColumn,
                                  (rows->getLongest() + 2) * metrics.horizontalAdvance(QLatin1Char('M')));
    if (top.row() < model.rowCount())
        view->scrollTo(model.index(top.row(), 0), QAbstractItemView::PositionAtTop);
    showValue();
}

// Of the attribute that is selected, in sight; of a node without a value, the first below it.
void TextDock::showValue()
{
    if (!pages || !model.getRows())
        return;
    model.mark(watch.getPath());
    const auto* const shown =
        model.getMarked() ? model.getMarked() : model.getRows()->findBelow(watch.getPath());
    if (!shown)
        return;
    const int row = model.getRows()->findRow(shown->offset);
    const QModelIndex place = model.index(row, TextModel::TextColumn);
    const int sideways = view->horizontalScrollBar()->value();
    const QRect seen = view->visualRect(place);
    if (!view->viewport()->rect().contains(view->viewport()->rect().left() + 1, seen.center().y()))
        view->scrollTo(place, QAbstractItemView::PositionAtCenter);
    view->horizontalScrollBar()->setValue(sideways);
}

bool TextDock::eventFilter(QObject* object, QEvent* event)
{
    if (object == view->viewport() && event->type() == QEvent::MouseButtonRelease) {
        const auto& click = *static_cast<QMouseEvent*>(event);
        const bool isPlain = click.button() == Qt::LeftButton && click.modifiers() == Qt::NoModifier;
        if (isPlain && view->selectionModel()->selectedRows().size() <= 1)
            selectAt(click.pos());
    }
    return QDockWidget::eventFilter(object, event);
}

void TextDock::requestMenu(const QPoint& position)
{
    selectAt(position);
    emit menuRequested(view->viewport()->mapToGlobal(position));
}

void TextDock::selectAt(const QPoint& position)
{
    const QModelIndex text = view->indexAt(position).siblingAtColumn(TextModel::TextColumn);
    if (text.isValid())
        selectAt(text.row(),
                 delegate->columnAt(position.x() - view->visualRect(text).left(), view->font(), text));
}

void TextDock::selectAt(int row, int column)
{
    const auto* const value = model.getRows()->findValue(row, column);
    if (!value)
        return;
    emit selectRequested(value->path);
    view->setFocus(); // as whoever reads the text goes on with it
}

void TextDock::copySelected() const
{
    QModelIndexList rows = view->selectionModel()->selectedRows(TextModel::TextColumn);
    std::sort(rows.begin(), rows.end());
    QString text;
    for (const QModelIndex& row : qAsConst(rows)) {
        if (!text.isEmpty() && model.getRows()->getLine(row.row()) > 0)
            text += QLatin1Char('\n');
        text += row.data().toString();
    }
    QApplication::clipboard()->setText(text);
}

} // namespace Vantry
