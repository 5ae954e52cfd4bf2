#include "widgets/AppConfigDataAccessWidget.h"

#include "host/Utilities/ModelViews/AdvancedAttributeModel.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModelUtils.h"
#include "host/Utilities/ModelViews/Widgets/AttributeTreeModelInputDialogs.h"
#include "host/Utilities/ModelViews/Widgets/LongTextDelegate.h"
#include "host/Utilities/RepositoryAccess.h"
#include "widgets/CellEditor.h"
#include "widgets/CheckBoxWidget.h"
#include "widgets/DateTimeEditWidget.h"
#include "widgets/LineEditWidget.h"
#include "widgets/ListWidget.h"
#include "widgets/PageWindow.h"
#include "widgets/RowHeader.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QScrollBar>

#include <algorithm>

using Utilities::ModelViews::AdvancedAttributeModel;
using Utilities::ModelViews::AttributeTreeViewModelUtils;
using Utilities::ModelViews::Widgets::AttributeTreeModelInputDialogs;

namespace {

constexpr int valueColumn = 1;
constexpr int pathColumn = 4;

// A menu that stays when it is closed; its window, with the picture of it, would only take room.
class KeptMenu : public QMenu
{
public:
    using QMenu::QMenu;

    void giveBackWindow() { destroy(); }
};

// Draws a cell that reaches out of sight at the right within the visible part; otherwise what is aligned
// right, as numbers are, would be out of sight. Its view must draw anew when it scrolls sideways.
class VisiblePartDelegate : public Utilities::ModelViews::Widgets::LongTextDelegate
{
public:
    using LongTextDelegate::LongTextDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QStyleOptionViewItem visible(option);
        if (const auto* const view = qobject_cast<const QAbstractItemView*>(option.widget))
            visible.rect.setRight(qMin(option.rect.right(), view->viewport()->rect().right()));
        LongTextDelegate::paint(painter, visible, index);
    }
};

} // namespace

AppConfigDataAccessWidget::AppConfigDataAccessWidget(QWidget* parent)
    : QTableView(parent), repository(Utilities::GetAppConfigRepositoryInterface()),
      attributeModel(std::make_shared<AdvancedAttributeModel>(this)),
      inputDialogs(QSharedPointer<AttributeTreeModelInputDialogs>::create(parent)),
      treeViewModelUtils(std::make_shared<AttributeTreeViewModelUtils>())
{
    setUpView();
    attributeModel->setLargeDropConfirmation(
        [this](int attributes) { return isLargeDropWanted(attributes); });
    setModel(attributeModel.get());
    for (int column = 0; column < attributeModel->columnCount(); ++column)
        horizontalHeader()->setSectionResizeMode(column, QHeaderView::ResizeToContents);
    connect(attributeModel.get(), &QAbstractItemModel::dataChanged, this,
            &AppConfigDataAccessWidget::followChange);
    for (const auto change : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(attributeModel.get(), change, this, &AppConfigDataAccessWidget::fitColumns);
    connect(attributeModel.get(), &QAbstractItemModel::modelReset, this,
            &AppConfigDataAccessWidget::fitColumns);
    connect(this, &QWidget::customContextMenuRequested, this,
            &AppConfigDataAccessWidget::onCustomContextMenu);
    setAlternatingRowColors(true);
    setStyleSheet(QString::fromLatin1("alternate-background-color: white; background-color: grey;"));
}

AppConfigDataAccessWidget::~AppConfigDataAccessWidget() = default;

void AppConfigDataAccessWidget::setUpView()
{
    setAcceptDrops(true);
    setDropIndicatorShown(true);
    setDragEnabled(false);           // the mouse selects cells; rows are moved by their headers
    setDragDropOverwriteMode(false); // what is dropped goes between rows
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setContextMenuPolicy(Qt::CustomContextMenu);
    new Widgets::RowHeader(*this);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft |
                                            Qt::AlignVCenter); // its middle may be out of sight
    // Each change of a value has the columns measured: by about as many rows as are seen.
    horizontalHeader()->setResizeContentsPrecision(50);
    setTabKeyNavigation(false);                     // or the keyboard could not leave the table
    setItemDelegate(new VisiblePartDelegate(this)); // a value column that was set is wider than the view
    setAccessibleName(tr("Attribute monitor"));
}

void AppConfigDataAccessWidget::onCustomContextMenu(QPoint /*point*/)
{
    const QModelIndexList selected = selectedIndexes();
    const QPointer<KeptMenu> menu = new KeptMenu(this); // stays until the monitor goes
    const auto add = [this, &menu](const QString& text, const char* icon, auto slot) {
        menu->addAction(iconOf(icon), text, this, slot);
    };
    add(tr("Load"), "open", &AppConfigDataAccessWidget::onLoadSelected);
    add(tr("Save As"), "save_as", &AppConfigDataAccessWidget::onSaveAsSelected);
    add(tr("Save"), "save", &AppConfigDataAccessWidget::onSaveSelected);
    if (!selected.isEmpty() && selected.last().isValid()) {
        add(tr("Edit"), "edit", &AppConfigDataAccessWidget::onAttributeUpdateSelected);
        add(tr("Remove Selected Node"), "delete", &AppConfigDataAccessWidget::onAttributeDeleteSelected);
    }
    menu->exec(QCursor::pos());
    if (menu) // the host may close the page under an open menu
        menu->giveBackWindow();
}

QIcon AppConfigDataAccessWidget::iconOf(const char* name)
{
    QIcon& icon = icons[QString::fromLatin1(name)];
    if (icon.isNull())
        icon = QIcon(QString::fromLatin1(":/Vantry/Resources/%1.png").arg(QLatin1String(name)));
    return icon;
}

void AppConfigDataAccessWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_A && event->modifiers() == Qt::ControlModifier)
        selectAll();
    else if (event->key() == Qt::Key_Delete)
        onAttributeDeleteSelected();
    else if (event->key() == Qt::Key_F2)
        onAttributeUpdateSelected();
}

void AppConfigDataAccessWidget::mouseDoubleClickEvent(QMouseEvent* /*mouseEvent*/)
{
    onAttributeUpdateSelected();
}

void AppConfigDataAccessWidget::onAttributeUpdateSelected()
{
    const QModelIndexList selected = selectedIndexes();
    if (selected.isEmpty())
        return;
    const QModelIndex index = selected.last();
    if (!index.isValid() || index.column() != valueColumn)
        return;
    QString path;
    QVariant value;
    if (getAttributePathAndValue(index, path, value))
        editAttributeBasedOnDataType(index, path, value);
}

bool AppConfigDataAccessWidget::getAttributePathAndValue(QModelIndex selectedIndex,
                                                         QString& attributeFullPath, QVariant& attributeValue)
{
    QStringList names;
    const QModelIndex element =
        attributeModel->index(selectedIndex.row(), pathColumn, selectedIndex.parent());
    for (QModelIndex index = element; index.isValid(); index = index.parent())
        names.prepend(index.data(Qt::DisplayRole).toString());
    attributeFullPath = repository ? repository->buildAttributePath(names) : QString();
    if (attributeFullPath.isEmpty())
        return false;
    if (const auto reader = repository->getReaderInterface())
        reader->readAttributeValue(attributeFullPath, attributeValue, 0);
    return true;
}

void AppConfigDataAccessWidget::editAttributeBasedOnDataType(QModelIndex selectedIndex,
                                                             QString attributeFullPath,
                                                             QVariant& attributeValue)
{
    switch (Widgets::editorKindOf(attributeValue)) {
    case Widgets::EditorKind::None:
        return;
    case Widgets::EditorKind::CheckBox:
        return showCheckBox(selectedIndex, attributeFullPath, attributeValue);
    case Widgets::EditorKind::List:
        return showListView(selectedIndex, attributeFullPath, attributeValue);
    case Widgets::EditorKind::DateTime:
        return showDateTimeEdit(selectedIndex, attributeFullPath, attributeValue);
    case Widgets::EditorKind::Line:
        return showLineEdit(selectedIndex, attributeFullPath, attributeValue);
    }
}

void AppConfigDataAccessWidget::showListView(QModelIndex /*selectedIndex*/, QString attributeFullPath,
                                             QVariant& attributeValue)
{
    auto* const window = new Widgets::ListWidget(nullptr, attributeFullPath, attributeValue);
    Widgets::deleteWith(*this, *window);
    window->show();
    listWidget = window;
}

void AppConfigDataAccessWidget::showLineEdit(QModelIndex selectedIndex, QString attributeFullPath,
                                             QVariant& attributeValue)
{
    openEditor<Widgets::LineEditWidget>(selectedIndex, attributeFullPath, attributeValue);
}

void AppConfigDataAccessWidget::showCheckBox(QModelIndex selectedIndex, QString attributeFullPath,
                                             QVariant& attributeValue)
{
    openEditor<Widgets::CheckBoxWidget>(selectedIndex, attributeFullPath, attributeValue);
}

void AppConfigDataAccessWidget::showDateTimeEdit(QModelIndex selectedIndex, QString attributeFullPath,
                                                 QVariant& attributeValue)
{
    setValueColumnWidth(width() + 5);
    openEditor<Widgets::DateTimeEditWidget>(selectedIndex, attributeFullPath, attributeValue);
}

template <typename Editor>
void AppConfigDataAccessWidget::openEditor(const QModelIndex& index, const QString& attributeFullPath,
                                           const QVariant& attributeValue)
{
    auto* const editor = new Editor(this, attributeFullPath, attributeValue);
    connect(editor, &Editor::resetDavModel, this, &AppConfigDataAccessWidget::textEditingFinished);
    editedCell = index;
    Widgets::placeOverCell(*this, index, *editor);
}

void AppConfigDataAccessWidget::textEditingFinished()
{
    if (listWidget)
        listWidget->close();
    const bool hasKeyboard = isAncestorOf(QApplication::focusWidget());
    reset();
    if (hasKeyboard) // which an editor had, and would go to whatever comes after the table
        setFocus();
    QString path;
    leftValue.clear();
    if (editedCell.isValid())
        getAttributePathAndValue(editedCell, path, leftValue);
    setValueColumnWidth(width());
}

bool AppConfigDataAccessWidget::focusNextPrevChild(bool next)
{
    // Who leaves a cell goes on in the table; an editor, made last, is the last of all.
    if (hasFocus() || !isAncestorOf(QApplication::focusWidget()))
        return QTableView::focusNextPrevChild(next);
    setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void AppConfigDataAccessWidget::setValueColumnWidth(int width)
{
    valueColumnWidth = width;
    setColumnWidth(valueColumn, width);
}

// Once control returns to the event loop, so that many changes cost one measuring.
void AppConfigDataAccessWidget::fitColumns()
{
    if (!indexWidget(editedCell))
        valueColumnWidth = 0;
    horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
}

// The width that an edit needs, and the one that it leaves, last until another change is shown than its own.
void AppConfigDataAccessWidget::followChange(const QModelIndex& first, const QModelIndex& last,
                                             const QVector<int>& roles)
{
    const bool areColours = !roles.isEmpty() && !roles.contains(Qt::DisplayRole);
    const bool isOfEdited = first.row() == editedCell.row() && last.row() == editedCell.row();
    const bool isOwn = isOfEdited && editedCell.data(Qt::EditRole) == leftValue;
    if (valueColumnWidth > 0 && !areColours && !isOwn)
        fitColumns();
}

// A click on a value that is wider than the view would push the names out of sight.
void AppConfigDataAccessWidget::scrollTo(const QModelIndex& index, ScrollHint hint)
{
    const int left = horizontalScrollBar()->value();
    const QRect cell = visualRect(index);
    QTableView::scrollTo(index, hint);
    if (cell.right() >= 0 && cell.left() < viewport()->width())
        horizontalScrollBar()->setValue(left);
}

void AppConfigDataAccessWidget::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    if (dx != 0)
        viewport()->update();
}

void AppConfigDataAccessWidget::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    horizontalHeader()->resizeSections(QHeaderView::ResizeToContents);
}

// What a watched attribute shows changes all the time, and the header asks at every change: a width that was
// set must outlive it. Otherwise a long value takes the room that the other columns leave, or half the view.
int AppConfigDataAccessWidget::sizeHintForColumn(int column) const
{
    const int wanted = QTableView::sizeHintForColumn(column);
    if (column != valueColumn)
        return wanted;
    const int half = viewport()->width() / 2;
    if (valueColumnWidth > 0 || wanted <= half)
        return valueColumnWidth > 0 ? valueColumnWidth : wanted;
    int others = 0;
    for (int other = 0; other < attributeModel->columnCount(); ++other) {
        if (other != valueColumn)
            others += qMax(QTableView::sizeHintForColumn(other), horizontalHeader()->sectionSizeHint(other));
    }
    return qMin(wanted, qMax(half, viewport()->width() - others));
}

void AppConfigDataAccessWidget::onAttributeDeleteSelected()
{
    QList<int> rows; // a row as often as it has selected cells
    for (const QModelIndex& index : selectedIndexes()) {
        if (index.isValid())
            rows.append(index.row());
    }
    std::sort(rows.begin(), rows.end(), std::greater<>());
    removeOneByOne(rows);
}

// Takes away the row at each of the places when its turn comes. What follows on each other goes
// at once: removing a hundred thousand rows singly would hold up the window for seconds.
void AppConfigDataAccessWidget::removeOneByOne(const QList<int>& descendingRows)
{
    int first = 0;
    int count = 0;
    for (const int row : descendingRows) {
        if (row < first - 1) {
            attributeModel->removeRows(first, count, rootIndex());
            count = 0;
        }
        first = row;
        count = std::min(count + 1, attributeModel->rowCount() - row); // there is none after the last
    }
    attributeModel->removeRows(first, count, rootIndex());
}

void AppConfigDataAccessWidget::onLoadSelected()
{
    const QString fileName =
        inputDialogs->showFileOpenDialog(tr("Select File"), QString(), tr(" Project File (*.dap)"));
    if (fileName.isEmpty())
        return;
    QString content;
    QString errorText;
    if (!treeViewModelUtils->readTextFile(fileName, content, errorText)) {
        AttributeTreeModelInputDialogs::ShowWarningMessage(this, QString(), errorText);
        return;
    }
    lastProjectFileName = fileName;
    attributeModel->loadCustomAttributeList(
        content.split(QLatin1Char('\n'), Qt::KeepEmptyParts, Qt::CaseSensitive));
}

void AppConfigDataAccessWidget::onSaveAsSelected()
{
    const QString fileName =
        inputDialogs->showSaveAsDialog(tr("Save As"), QString(), tr(" Project File (*.dap)"));
    if (fileName.isEmpty())
        return;
    lastProjectFileName = fileName; // also when it cannot be saved
    saveTo(fileName);
}

void AppConfigDataAccessWidget::onSaveSelected()
{
    if (lastProjectFileName.isEmpty())
        onSaveAsSelected();
    else
        saveTo(lastProjectFileName);
}

void AppConfigDataAccessWidget::saveTo(const QString& fileName)
{
    const QString text = attributeModel->getAttributeFullPathList().join(QLatin1Char('\n'));
    if (!treeViewModelUtils->writeTxtFile(text, fileName))
        AttributeTreeModelInputDialogs::ShowWarningMessage(this, QString(), tr("Unable to Save"));
}

bool AppConfigDataAccessWidget::isLargeDropWanted(int attributes)
{
    return inputDialogs->showConfirmationDialog(tr("Add %1 attributes to the monitor?").arg(attributes),
                                                QString()) == QMessageBox::Yes;
}
