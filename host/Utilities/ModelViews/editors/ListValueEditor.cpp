#include "host/Utilities/ModelViews/editors/ListValueEditor.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>

namespace Utilities::ModelViews::Widgets {

ListValueEditor::ListValueEditor(QWidget* parent) : ValueEditor(parent), list(new QListWidget(this))
{
    list->setObjectName(QStringLiteral("listValue"));
    list->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                          QAbstractItemView::AnyKeyPressed);
    list->setTabKeyNavigation(false);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(list);
    auto* const column = new QVBoxLayout;
    layout->addLayout(column);
    const QPushButton* const add = addButton(*column, tr("&Add"), "btnAdd");
    removeButton = addButton(*column, tr("&Remove"), "btnRemove");
    upButton = addButton(*column, tr("Move &up"), "btnUp");
    downButton = addButton(*column, tr("Move &down"), "btnDown");
    column->addStretch();
    setFocusProxy(list);

    connect(add, &QPushButton::clicked, this, &ListValueEditor::addRow);
    connect(removeButton, &QPushButton::clicked, this, &ListValueEditor::removeRow);
    connect(upButton, &QPushButton::clicked, this, [this] { moveRow(-1); });
    connect(downButton, &QPushButton::clicked, this, [this] { moveRow(1); });
    connect(list, &QListWidget::currentRowChanged, this, &ListValueEditor::updateButtons);
    connect(list, &QListWidget::itemChanged, this, &ValueEditor::edited);
    auto* const remove = new QShortcut(QKeySequence::Delete, list, nullptr, nullptr, Qt::WidgetShortcut);
    connect(remove, &QShortcut::activated, this, &ListValueEditor::removeRow);
    updateButtons();
}

QPushButton* ListValueEditor::addButton(QVBoxLayout& column, const QString& text, const char* name)
{
    auto* const button = new QPushButton(text, this);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false); // Return is for the dialog
    column.addWidget(button);
    return button;
}

QVariant ListValueEditor::getValue(QString& fault) const
{
    fault.clear();
    QStringList texts;
    for (int row = 0; row < list->count(); ++row)
        texts.append(list->item(row)->text());
    return texts;
}

void ListValueEditor::setValue(const QVariant& value)
{
    list->clear();
    for (const QString& text : value.toStringList())
        insertRow(list->count(), text);
}

void ListValueEditor::insertRow(int row, const QString& text)
{
    list->insertItem(row, text);
    list->item(row)->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable);
}

void ListValueEditor::addRow()
{
    const int row = list->currentRow() + 1;
    insertRow(row, {});
    list->setCurrentRow(row);
    list->setFocus();
    list->editItem(list->item(row));
    emit edited();
}

void ListValueEditor::removeRow()
{
    const std::unique_ptr<QListWidgetItem> removed(list->takeItem(list->currentRow()));
    list->setFocus();
    updateButtons();
    emit edited();
}

void ListValueEditor::moveRow(int by)
{
    const int row = list->currentRow();
    list->insertItem(row + by, list->takeItem(row));
    list->setCurrentRow(row + by);
    emit edited();
}

void ListValueEditor::updateButtons()
{
    const int row = list->currentRow();
    removeButton->setEnabled(row >= 0);
    upButton->setEnabled(row > 0);
    downButton->setEnabled(row >= 0 && row < list->count() - 1);
}

} // namespace Utilities::ModelViews::Widgets
