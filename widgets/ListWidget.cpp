#include "widgets/ListWidget.h"

#include "host/Utilities/ModelViews/Widgets/LongTextDelegate.h"
#include "host/Utilities/RepositoryAccess.h"
#include "ui_ListWidget.h"
#include "widgets/AttributeWriting.h"
#include "widgets/ListModel.h"

#include <QHeaderView>
#include <QLineEdit>

#include <limits>

namespace Widgets {

using Utilities::ModelViews::Widgets::LongTextDelegate;

namespace {

QString entryOf(const QVariant& list)
{
    return list.toStringList().join(QLatin1Char('\n'));
}

// A text may be longer than a line edit takes by itself; it would be cut as soon as somebody edits it.
class ElementDelegate : public LongTextDelegate
{
public:
    using LongTextDelegate::LongTextDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override
    {
        QWidget* const editor = LongTextDelegate::createEditor(parent, option, index);
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
    const bool isList = attributeValue.userType() == QMetaType::QStringList;
    model = new ListModel(isList ? attributeValue.toStringList() : QStringList(), this);
    listRowCount = model->rowCount();
    setUpTable();
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
    model->replace(entry.split(QLatin1Char('\n')));
    listRowCount = model->rowCount();
}

void ListWidget::setUpTable()
{
    QTableView* const table = ui->tblListType;
    table->verticalHeader()->hide();
    table->horizontalHeader()->hide();
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->horizontalHeader()->setResizeContentsPrecision(100); // rows
    table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                           QAbstractItemView::AnyKeyPressed);
    table->setModel(model);
    table->setItemDelegate(new ElementDelegate(table));
    table->setTabKeyNavigation(false); // or the keyboard could not leave it
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
    const QModelIndex current = ui->tblListType->currentIndex();
    ui->tblListType->setCurrentIndex(current.siblingAtColumn(ListModel::NumberColumn));
}

void ListWidget::on_btnPlus_clicked()
{
    if (listRowCount >= 0)
        model->append({});
    ++listRowCount;
}

void ListWidget::on_btnMinus_clicked()
{
    --listRowCount;
    if (listRowCount >= 0)
        model->removeLast();
}

bool ListWidget::getModifiedAttributeValue(QVariant& vValue) const
{
    if (attributeValue.userType() != QMetaType::QStringList || listRowCount < 0)
        return false;
    vValue = model->getElements();
    return true;
}

} // namespace Widgets
