// The browser page's editing of values in place.
#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"
#include "ui_AttributeBrowserWidget.h"
#include "widgets/AttributeBrowserWidget.h"
#include "widgets/CellEditor.h"
#include "widgets/CheckBoxWidget.h"
#include "widgets/DateTimeEditWidget.h"
#include "widgets/LineEditWidget.h"
#include "widgets/ListWidget.h"
#include "widgets/PageWindow.h"

#include <QApplication>
#include <QKeyEvent>

#include <utility>

namespace Widgets {

using Utilities::ModelViews::AttributeTreeViewModel;

void AttributeBrowserWidget::onAttributeUpdateSelected()
{
    if (isEditing()) // the key comes out of the editor
        return;
    const QModelIndexList selected = ui->treeView->selectionModel()->selectedIndexes();
    if (selected.isEmpty() || selected.last().column() != AttributeTreeViewModel::ValueColumn)
        return;
    const QString path = pathOf(selected.last());
    QVariant value = readValue(path);
    if (value.isValid())
        editAttributeBasedOnDataType(selected.last(), path, value);
}

void AttributeBrowserWidget::editAttributeBasedOnDataType(QModelIndex selectedIndex,
                                                          QString attributeFullPath, QVariant& attributeValue)
{
    if (!attributeValue.isValid())
        return;
    switch (editorKindOf(attributeValue)) {
    case EditorKind::None:
        return;
    case EditorKind::CheckBox:
        return showCheckBox(selectedIndex, attributeFullPath, attributeValue);
    case EditorKind::List:
        return showListView(selectedIndex, attributeFullPath, attributeValue);
    case EditorKind::DateTime:
        return showDateTimeEdit(selectedIndex, attributeFullPath, attributeValue);
    case EditorKind::Line:
        return showLineEdit(selectedIndex, attributeFullPath, attributeValue);
    }
}

void AttributeBrowserWidget::showListView(QModelIndex selectedIndex, QString attributeFullPath,
                                          QVariant& attributeValue)
{
    auto* const editor = new ListWidget(nullptr, attributeFullPath, attributeValue);
    deleteWith(*this, *editor); // until then it is hidden when it is closed
    editor->show();
    activeEditor = editor;
    contextIndex = selectedIndex;
}

void AttributeBrowserWidget::showLineEdit(QModelIndex selectedIndex, QString attributeFullPath,
                                          QVariant& attributeValue)
{
    showInCell<LineEditWidget>(selectedIndex, attributeFullPath, attributeValue);
}

void AttributeBrowserWidget::showCheckBox(QModelIndex selectedIndex, QString attributeFullPath,
                                          QVariant& attributeValue)
{
    showInCell<CheckBoxWidget>(selectedIndex, attributeFullPath, attributeValue);
}

void AttributeBrowserWidget::showDateTimeEdit(QModelIndex selectedIndex, QString attributeFullPath,
                                              QVariant& attributeValue)
{
    showInCell<DateTimeEditWidget>(selectedIndex, attributeFullPath, attributeValue);
}

template <typename Editor>
void AttributeBrowserWidget::showInCell(const QModelIndex& cell, const QString& path, const QVariant& value)
{
    // One that was left without an end would stay in the tree for ever.
    ui->treeView->setIndexWidget(contextIndex, nullptr);
    auto* const editor = new Editor(this, path, value);
    connect(editor, &Editor::resetDavModel, this, &AttributeBrowserWidget::textEditingFinished);
    activeEditor = editor;
    contextIndex = cell;
    placeOverCell(*ui->treeView, cell, *editor);
    editor->installEventFilter(this);
}

void AttributeBrowserWidget::editAgain(const Utilities::RefusedEdit& refused)
{
    const QWidget* const active = QApplication::activeWindow();
    if (active && active != window()) // it is for the page of another window
        return;
    if (!isVisible()) { // its page is being chosen
        toEditOnceShown = refused;
        return;
    }
    QVariant value = readValue(refused.path);
    if (value.isValid() && !treeModel->indexFromPath(refused.path).isValid()) { // the search leaves it out
        ui->edtSearchPath->setText(refused.path);
        onBtnReadAttributeClicked();
    }
    reveal(refused.path);
    const QModelIndex item = treeModel->indexFromPath(refused.path);
    if (!item.isValid())
        return;
    activeEditor.clear();
    editAttributeBasedOnDataType(item.siblingAtColumn(AttributeTreeViewModel::ValueColumn), refused.path,
                                 value);
    if (activeEditor)
        QMetaObject::invokeMethod(activeEditor, "enter", Q_ARG(QString, refused.entered));
}

void AttributeBrowserWidget::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (toEditOnceShown.path.isEmpty())
        return;
    const auto edit = [this, refused = std::exchange(toEditOnceShown, {})] { editAgain(refused); };
    QMetaObject::invokeMethod(this, edit, Qt::QueuedConnection);
}

bool AttributeBrowserWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == ui->treeView && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Asterisk) {
        // The tree would open each leaf as well, which takes seconds where there are very many.
        expandBelow(ui->treeView->currentIndex().siblingAtColumn(0));
        return true;
    }
    // The tree hides an editor whose item is closed or gone, and would show it again.
    if (event->type() == QEvent::Hide && watched == activeEditor && activeEditor->isHidden()) {
        const auto finish = [this, editor = activeEditor] {
            if (editor && editor == activeEditor)
                textEditingFinished();
        };
        QMetaObject::invokeMethod(this, finish, Qt::QueuedConnection);
    }
    return QWidget::eventFilter(watched, event);
}

bool AttributeBrowserWidget::isEditing() const
{
    const QWidget* const focused = QApplication::focusWidget();
    return activeEditor && focused && (focused == activeEditor || activeEditor->isAncestorOf(focused));
}

bool AttributeBrowserWidget::focusNextPrevChild(bool next)
{
    // Who leaves a cell, or has it taken away, goes on in the tree.
    if (!isEditing())
        return QWidget::focusNextPrevChild(next);
    ui->treeView->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void AttributeBrowserWidget::textEditingFinished()
{
    QTreeView* const tree = ui->treeView;
    if (activeEditor)
        activeEditor->close();
    activeEditor.clear();
    tree->clearSelection();
    tree->setIndexWidget(contextIndex, nullptr);
    // The editor has moved it to its own column, and a wide value its name out of sight.
    tree->selectionModel()->setCurrentIndex(contextIndex.sibling(contextIndex.row(), 0),
                                            QItemSelectionModel::NoUpdate);
}

} // namespace Widgets
