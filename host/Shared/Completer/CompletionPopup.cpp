#include "host/Shared/Completer/CompletionPopup.h"

#include <QScopedValueRollback>
#include <QScrollBar>

namespace Shared::Completer {

CompletionPopup::CompletionPopup() : QListView(nullptr)
{
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setUniformItemSizes(true); // or each keystroke measures a thousand rows
    setTextElideMode(Qt::ElideMiddle);
}

void CompletionPopup::reset()
{
    QListView::reset();
    if (!keptPlace)
        return;
    executeDelayedItemsLayout();
    if (keptPlace->currentRow >= 0)
        selectionModel()->setCurrentIndex(model()->index(keptPlace->currentRow, modelColumn()),
                                          keptPlace->isSelected ? QItemSelectionModel::ClearAndSelect
                                                                : QItemSelectionModel::NoUpdate);
    verticalScrollBar()->setValue(keptPlace->scrolled);
}

void CompletionPopup::verticalScrollbarValueChanged(int value)
{
    const QScopedValueRollback keeping(keptPlace, std::optional<Place>(currentPlace()));
    QListView::verticalScrollbarValueChanged(value);
}

void CompletionPopup::timerEvent(QTimerEvent* event)
{
    const QScopedValueRollback keeping(keptPlace, std::optional<Place>(currentPlace()));
    QListView::timerEvent(event);
}

CompletionPopup::Place CompletionPopup::currentPlace() const
{
    return {verticalScrollBar()->value(), currentIndex().row(), selectionModel()->hasSelection()};
}

} // namespace Shared::Completer
