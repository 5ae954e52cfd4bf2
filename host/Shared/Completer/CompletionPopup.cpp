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
    if (!kept)
        return;
    executeDelayedItemsLayout();
    if (kept->currentRow >= 0)
        selectionModel()->setCurrentIndex(model()->index(kept->currentRow, modelColumn()),
                                          kept->isSelected ? QItemSelectionModel::ClearAndSelect
                                                           : QItemSelectionModel::NoUpdate);
    verticalScrollBar()->setValue(kept->scrolled);
}

void CompletionPopup::verticalScrollbarValueChanged(int value)
{
    const QScopedValueRollback keeping(kept, std::optional<ScrollState>(currentState()));
    QListView::verticalScrollbarValueChanged(value);
}

void CompletionPopup::timerEvent(QTimerEvent* event)
{
    const QScopedValueRollback keeping(kept, std::optional<ScrollState>(currentState()));
    QListView::timerEvent(event);
}

CompletionPopup::ScrollState CompletionPopup::currentState() const
{
    return {verticalScrollBar()->value(), currentIndex().row(), selectionModel()->hasSelection()};
}

} // namespace Shared::Completer
