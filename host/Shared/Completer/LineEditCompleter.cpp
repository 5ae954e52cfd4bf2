#include "host/Shared/Completer/LineEditCompleter.h"

#include "host/Shared/Completer/TreeModelCompleter.h"

#include <QAbstractItemView>
#include <QAbstractProxyModel>
#include <QKeyEvent>

namespace Shared::Completer {

namespace {

// The whole path of a row of the popup, which shows the completer's own model over the one it was given.
QString pathOfProposal(const QCompleter& completer, const QModelIndex& proposal)
{
    const auto* const proxy = static_cast<const QAbstractProxyModel*>(proposal.model());
    return completer.pathFromIndex(proxy->mapToSource(proposal));
}

} // namespace

LineEditCompleter::LineEditCompleter(QWidget* parent) : QLineEdit(parent)
{
}

void LineEditCompleter::refreshCompleterModel(QAbstractItemModel* model)
{
    QAbstractItemModel* const replaced = completer() ? completer()->model() : nullptr;
    if (model == replaced)
        return;
    if (!completer() || (model && replaced && isTextFromPopup())) {
        dispose(model);
        return;
    }
    offeredText = text();
    if (auto* const treeCompleter = qobject_cast<TreeModelCompleter*>(completer()))
        treeCompleter->replaceModel(model);
    else
        completer()->setModel(model);
    dispose(replaced);
    QAbstractItemView* const popup = visiblePopup();
    if (popup && !model)
        popup->hide();
}

bool LineEditCompleter::event(QEvent* event)
{
    // Taken here, since QWidget moves the focus before it asks keyPressEvent.
    if (event->type() == QEvent::KeyPress) {
        auto* const keyEvent = static_cast<QKeyEvent*>(event);
        if (keyEvent->key() == Qt::Key_Tab && keyEvent->modifiers() == Qt::NoModifier && takeProposal()) {
            keyEvent->accept();
            return true;
        }
    }
    return QLineEdit::event(event);
}

void LineEditCompleter::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool isEscape = event->key() == Qt::Key_Escape;
    QAbstractItemView* const popup = visiblePopup();
    const bool isChosen = popup && popup->selectionModel()->hasSelection();
    if ((isReturn && isChosen && takeProposal()) || (isEscape && dismissPopup())) {
        event->accept();
        return;
    }
    if (isReturn && popup)
        popup->hide();
    QLineEdit::keyPressEvent(event);
    if (isReturn && popup)
        event->accept(); // or the completer would take its own current proposal
    placePopup();
}

void LineEditCompleter::inputMethodEvent(QInputMethodEvent* event)
{
    QLineEdit::inputMethodEvent(event);
    placePopup();
}

// Anew at each change of the text, since QLineEdit has it open right below itself.
void LineEditCompleter::placePopup()
{
    if (!uncovered || !visiblePopup())
        return;
    QRect kept = rect();
    kept.setBottom(mapFromGlobal(uncovered->mapToGlobal(uncovered->rect().bottomLeft())).y() + 1);
    completer()->complete(kept);
}

QAbstractItemView* LineEditCompleter::visiblePopup() const
{
    QAbstractItemView* const popup = completer() ? completer()->popup() : nullptr;
    return popup && popup->isVisible() ? popup : nullptr;
}

// Whether the text is not typed, but shown while the user walks through the popup: the selected proposal, or
// what was typed when the walk has left the proposals again.
bool LineEditCompleter::isTextFromPopup() const
{
    const QAbstractItemView* const popup = visiblePopup();
    if (!popup)
        return false;
    const QModelIndexList selected = popup->selectionModel()->selectedIndexes();
    return text() == offeredText ||
           (!selected.isEmpty() && text() == pathOfProposal(*completer(), selected.first()));
}

bool LineEditCompleter::takeProposal()
{
    QAbstractItemView* const popup = visiblePopup();
    if (!popup)
        return false;
    const QModelIndex current = popup->currentIndex();
    const QModelIndex proposal =
        current.isValid() ? current : popup->model()->index(0, completer()->completionColumn());
    if (!proposal.isValid())
        return false;
    const QString path = pathOfProposal(*completer(), proposal);
    popup->hide();
    setText(path);
    return true;
}

bool LineEditCompleter::dismissPopup()
{
    QAbstractItemView* const popup = visiblePopup();
    if (!popup)
        return false;
    popup->hide();
    if (popup->selectionModel()->hasSelection())
        setText(completer()->completionPrefix());
    return true;
}

void LineEditCompleter::dispose(QAbstractItemModel* model) const
{
    if (!model)
        return;
    QObject* const owner = model->QObject::parent();
    const auto* const widget = qobject_cast<QWidget*>(owner);
    if ((owner && owner == completer()) || (widget && (widget == this || widget->isAncestorOf(this))))
        model->deleteLater();
}

} // namespace Shared::Completer
