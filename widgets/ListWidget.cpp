#include "widgets/ListWidget.h"

#include "host/Utilities/RepositoryAccess.h"
#include "ui_ListWidget.h"
#include "widgets/AttributeWriting.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QStyledItemDelegate>

#include <limits>

namespace Widgets {

namespace {

enum Column { NumberColumn, TextColumn, ColumnCount };

QString entryOf(const QVariant& list)
{
    return list.toStringList().join(QLatin1Char('\n'));
}

// A text may be longer than a line edit takes by itself; it would be cut as soon as somebody edits it.
class ElementDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override
    {
        QWidget* const editor = QStyledItemDelegate::createEditor(parent, option, index);
        if (auto* const line = qobject_cast<QLineEdit*>(editor))
            line->setMaxLength(std::numeric_limits<int>::max());
        return editor;
    }
};

} // namespace

ListWidget::ListWidget(QWidget* parent, const QString& path, const QVariant& value)
    : QDialog(parent), ui(std::make_unique<Ui::ListWidget>()),
      repository(Utilities::GetAppConfigRepositoryInterface()), attributeFullPath(path), attributeValue(value)
{
    ui->setupUi(this);
    setWindowModality(Qt::ApplicationModal);
    setUpTable();
    if (attributeValue.userType() == QMetaType::QStringList)
        fillRows(attributeValue.toStringList());
    setFocus(Qt::OtherFocusReason);
}

// Closing ends the edit, so that one which is open has not ended.
ListWidget::~ListWidget()
{
    if (!isVisible())
        return;
    takeTypedElement();
    QVariant value;
    if (getModifiedAttributeValue(value) && value != attributeValue)
        refuseUnended(attributeFullPath, entryOf(value));
}

void ListWidget::enter(const QString& entry)
{
    ui->tblListType->setRowCount(0);
    listRowCount = 0;
    fillRows(entry.split(QLatin1Char('\n')));
}

void ListWidget::fillRows(const QStringList& elements)
{
    for (const QString& element : elements) {
        ui->tblListType->insertRow(listRowCount);
        fillRow(QString::number(listRowCount), element);
    }
}

void ListWidget::setUpTable()
{
    QTableWidget* const table = ui->tblListType;
    table->verticalHeader()->hide();
    table->horizontalHeader()->hide();
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                           QAbstractItemView::AnyKeyPressed);
    table->setColumnCount(ColumnCount);
    table->setItemDelegate(new ElementDelegate(table));
    table->setTabKeyNavigation(false); // or the keyboard could not leave it
}

void ListWidget::fillRow(const QString& number, const QString& text)
{
    auto numberItem = std::make_unique<QTableWidgetItem>(number);
    numberItem->setFlags(numberItem->flags() & ~Qt::ItemIsEditable);
    auto textItem = std::make_unique<QTableWidgetItem>(text);
    if (listRowCount >= 0) { // a table takes no item for a row that it does not have
        ui->tblListType->setItem(listRowCount, NumberColumn, numberItem.release());
        ui->tblListType->setItem(listRowCount, TextColumn, textItem.release());
    }
    ++listRowCount;
}

void ListWidget::focusOutEvent(QFocusEvent* /*event*/)
{
    const QWidget* const focused = focusWidget();
    if (!focused || focused->objectName() != ui->tblListType->objectName())
        close();
}

// It stays when it is closed, but its window, with the picture of it, would only take room.
void ListWidget::hideEvent(QHideEvent* event)
{
    QDialog::hideEvent(event);
    const auto giveBackWindow = [this] {
        if (isHidden())
            destroy();
    };
    QMetaObject::invokeMethod(this, giveBackWindow, Qt::QueuedConnection);
}

void ListWidget::on_btnCancel_clicked()
{
    close();
}

void ListWidget::on_btnWrite_clicked()
{
    takeTypedElement();
    QVariant value;
    const bool isList = getModifiedAttributeValue(value) && value.isValid();
    const QString entered = entryOf(value);
    if (!isList)
        refuseConversion(attributeFullPath, attributeValue, entered);
    else if (repository)
        writeEditedOrLog(*repository, attributeFullPath, value, entered);
    close();
}

void ListWidget::takeTypedElement()
{
    ui->tblListType->setCurrentCell(ui->tblListType->currentRow(), NumberColumn);
}

void ListWidget::on_btnPlus_clicked()
{
    ui->tblListType->insertRow(listRowCount);
    fillRow(QString::number(ui->tblListType->rowCount() - 1), QString());
}

void ListWidget::on_btnMinus_clicked()
{
    --listRowCount;
    ui->tblListType->removeRow(listRowCount);
}

bool ListWidget::getModifiedAttributeValue(QVariant& vValue) const
{
    if (attributeValue.userType() != QMetaType::QStringList)
        return false;
    QStringList elements;
    for (int row = 0; row < listRowCount; ++row)
        elements.append(ui->tblListType->item(row, TextColumn)->text());
    if (elements.size() != listRowCount)
        return false;
    vValue = elements;
    return true;
}

} // namespace Widgets
