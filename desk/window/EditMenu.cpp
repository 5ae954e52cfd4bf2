#include "desk/window/EditMenu.h"

#include "desk/common/CellEdit.h"
#include "desk/common/LongWork.h"
#include "desk/common/MenuText.h"
#include "desk/find/FindDock.h"
#include "desk/window/NodeActions.h"
#include "host/Utilities/ModelViews/Widgets/AttributeTreeModelInputDialogs.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace Vantry {

namespace {

// Whether the widget takes back what is typed into it by itself.
bool hasOwnHistory(const QWidget* widget)
{
    if (const auto* const line = qobject_cast<const QLineEdit*>(widget))
        return !line->isReadOnly();
    if (const auto* const text = qobject_cast<const QTextEdit*>(widget))
        return !text->isReadOnly();
    if (qobject_cast<const QAbstractSpinBox*>(widget))
        return true;
    const auto* const plainText = qobject_cast<const QPlainTextEdit*>(widget);
    return plainText && !plainText->isReadOnly();
}

} // namespace

EditMenu::EditMenu(std::shared_ptr<Repository> attributes, QWidget& editedWindow)
    : QMenu(tr("&Edit"), &editedWindow), repository(std::move(attributes)),
      history(repository->getHistoryInterface()), window(editedWindow), undo(addAction(QString())),
      redo(addAction(QString())), selection(repository, window)
{
    addSeparator();
    type = addAction(tr("Change &Type..."), this, &EditMenu::changeType);
    type->setObjectName(QStringLiteral("changeType"));
    node = new NodeActions(
        repository, [this] { return selection.getPath(); }, *this, window);
    undo->setObjectName(QStringLiteral("undo"));
    undo->setShortcut(QKeySequence::Undo);
    redo->setObjectName(QStringLiteral("redo"));
    redo->setShortcuts({QStringLiteral("Ctrl+Shift+Z"), QStringLiteral("Ctrl+Y")});
    connect(undo, &QAction::triggered, this, [this] { take(&History::undo); });
    connect(redo, &QAction::triggered, this, [this] { take(&History::redo); });
    connect(this, &QMenu::aboutToShow, this, [this] {
        endCellEdit(window);
        refresh();
        offerType();
    });
    refresh();
}

void EditMenu::refresh()
{
    node->offer();
    name(*undo, tr("&Undo"), history ? history->getUndoName() : QString());
    name(*redo, tr("&Redo"), history ? history->getRedoName() : QString());
}

void EditMenu::name(QAction& action, const QString& verb, const QString& step)
{
    action.setText(step.isEmpty() ? verb : verb + QLatin1Char(' ') + menuText(step));
    action.setEnabled(!step.isEmpty());
}

// What is refused is in the log.
void EditMenu::take(FrameworkCore::AppConfig::Outcome (History::*step)())
{
    endCellEdit(window);
    const QString title = step == &History::undo ? tr("Undoing %1").arg(history->getUndoName())
                                                 : tr("Redoing %1").arg(history->getRedoName());
    refusalsOf(title, *repository, [&](const NoteOutcome&) { (history.get()->*step)(); });
    refresh();
}

void EditMenu::addFinding(FindDock& dock)
{
    addSeparator();
    const auto add = [this, &dock](const QString& text, const char* name, const QKeySequence& key,
                                   const std::function<void()>& chosen) {
        QAction* const action = addAction(text, &dock, chosen, key);
        action->setObjectName(QLatin1String(name));
    };
    add(tr("&Find..."), "find", QKeySequence::Find, [&dock] { dock.beginFinding(); });
    add(tr("R&eplace..."), "replace", Qt::CTRL + Qt::Key_H, [&dock] { dock.beginReplacing(); });
    add(tr("Find Ne&xt"), "findNext", Qt::Key_F3, [&dock] { dock.goBy(1); });
    add(tr("Find &Previous"), "findPrevious", Qt::SHIFT + Qt::Key_F3, [&dock] { dock.goBy(-1); });
}

void EditMenu::offerType()
{
    const auto attribute = repository->getReaderInterface()->getAttribute(selection.getPath());
    type->setEnabled(attribute && FrameworkCore::AppConfig::isWritable(attribute->getAccessMode()) &&
                     attribute->getValue().isValid());
}

void EditMenu::changeType()
{
    using Utilities::ModelViews::Widgets::AttributeTreeModelInputDialogs;
    AttributeTreeModelInputDialogs(&window).showAttributeTypeDialog(selection.getPath());
    refresh();
}

void EditMenu::prepareFor(QKeyEvent& key)
{
    refresh();
    // Text fields leave this one of the keys to others, and a step would be done again by mistake.
    if (key.key() == Qt::Key_Y && key.modifiers() == Qt::ControlModifier &&
        hasOwnHistory(QApplication::focusWidget()))
        key.accept();
}

} // namespace Vantry
