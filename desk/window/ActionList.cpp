#include "desk/window/ActionList.h"

#include <QAction>
#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace Vantry {

namespace {

// As it is read.
QString plainText(const QAction& action)
{
    QString text = action.text();
    text.replace(QLatin1String("&&"), QString(QChar::Null));
    text.remove(QLatin1Char('&'));
    text.replace(QChar::Null, QLatin1Char('&'));
    const int end = text.indexOf(QLatin1Char('\t')); // what menus have on the right
    return end < 0 ? text : QStringLiteral("%1 (%2)").arg(text.left(end), text.mid(end + 1));
}

QString keysOf(const QAction& action)
{
    return QKeySequence::listToString(action.shortcuts(), QKeySequence::NativeText);
}

} // namespace

ActionList::ActionList(const QMenuBar& menus, Shown shown, QWidget* parent)
    : QDialog(parent), field(new QLineEdit), rows(new QTreeWidget)
{
    setWindowTitle(shown == Shown::Keys ? tr("Keys") : tr("Commands"));
    resize(fontMetrics().averageCharWidth() * 100, fontMetrics().lineSpacing() * 26);
    field->setObjectName(QStringLiteral("actionText"));
    field->setPlaceholderText(tr("Type a part of what is to be done"));
    field->setAccessibleName(field->placeholderText());
    field->installEventFilter(this);
    rows->setObjectName(QStringLiteral("actionRows"));
    rows->setAccessibleName(windowTitle());
    rows->setRootIsDecorated(false);
    rows->setUniformRowHeights(true);
    rows->setHeaderLabels({tr("Command"), tr("Keys")});
    addActions({}, menus.actions(), shown);
    if (shown == Shown::Keys)
        addOtherKeys();
    rows->header()->setStretchLastSection(false);
    rows->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    rows->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    auto* const column = new QVBoxLayout(this);
    column->addWidget(field);
    column->addWidget(rows, 1);
    connect(field, &QLineEdit::textChanged, this, &ActionList::narrow);
    connect(rows, &QTreeWidget::itemActivated, this, &QDialog::accept);
    narrow({});
}

void ActionList::addActions(const QString& place, const QList<QAction*>& listed, Shown shown)
{
    for (QAction* const action : listed) {
        const QString text = place + plainText(*action);
        if (action->menu()) {
            addActions(text + QStringLiteral(" > "), action->menu()->actions(), shown);
            continue;
        }
        const QString keys = keysOf(*action);
        if (action->isSeparator() || plainText(*action).isEmpty() || !action->isVisible() ||
            (shown == Shown::Keys && keys.isEmpty()))
            continue;
        auto* const row = new QTreeWidgetItem(rows, {text, keys});
        row->setDisabled(!action->isEnabled());
        actions.append(action);
    }
}

// Of single lists and fields.
void ActionList::addOtherKeys()
{
    const QPair<QString, QString> keys[] = {
        {tr("Edit the value of the selected row"), tr("F2")},
        {tr("Find: go to the list, then to the node"), tr("Return")},
        {tr("Find: check or uncheck the selected rows"), tr("Space")},
        {tr("Log, Find and others below or beside: close"), tr("Esc")},
        {tr("Lists: copy the selected rows"), tr("Ctrl+C")},
        {tr("To the next field or list, or back"), tr("Tab, Shift+Tab")},
    };
    for (const auto& [text, key] : keys) {
        auto* const row = new QTreeWidgetItem(rows, {text, key});
        row->setFlags(row->flags() & ~Qt::ItemIsSelectable);
        actions.append(nullptr);
    }
}

QAction* ActionList::getChosen() const
{
    const int row = rows->indexOfTopLevelItem(rows->currentItem());
    QAction* const action = row >= 0 && !rows->currentItem()->isHidden() ? actions[row] : nullptr;
    return action && action->isEnabled() ? action : nullptr;
}

// Each word must be somewhere. The first row that can be chosen is.
void ActionList::narrow(const QString& typed)
{
    const QStringList words = typed.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QTreeWidgetItem* first = nullptr;
    for (int number = 0; number < rows->topLevelItemCount(); ++number) {
        QTreeWidgetItem* const row = rows->topLevelItem(number);
        const QString text = row->text(0) + QLatin1Char(' ') + row->text(1);
        row->setHidden(!std::all_of(words.begin(), words.end(), [&text](const QString& word) {
            return text.contains(word, Qt::CaseInsensitive);
        }));
        if (!first && !row->isHidden() && !row->isDisabled())
            first = row;
    }
    rows->setCurrentItem(first);
}

// The arrows lead from the field through the rows.
bool ActionList::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == field && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown) {
            QCoreApplication::sendEvent(rows, event);
            return true;
        }
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            accept();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace Vantry
