#include "desk/files/BackendChooser.h"

#include "desk/files/BackendFiles.h"
#include "host/Utilities/ModelViews/ToolTipText.h"
#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace Vantry {

using Utilities::ModelViews::Widgets::PlainLabel;

BackendChooser::BackendChooser(const QString& actionVerb, const BackendFiles& files,
                               const QStringList& backends, QWidget* parent)
    : QDialog(parent), verb(actionVerb), filter(new QLineEdit), rows(new QListWidget)
{
    setObjectName(QStringLiteral("backendChooser"));
    setWindowTitle(tr("Choose Files"));
    resize(520, 420);
    filter->setObjectName(QStringLiteral("backendFilter"));
    filter->setPlaceholderText(tr("Part of a name or folder"));
    filter->setAccessibleName(tr("Filter"));
    filter->setClearButtonEnabled(true);
    filter->installEventFilter(this);
    rows->setObjectName(QStringLiteral("backendRows"));
    rows->setAccessibleName(tr("Open files"));
    rows->setSelectionMode(QAbstractItemView::ExtendedSelection);
    rows->setUniformItemSizes(true);
    const QStringList labels = files.getLabels(backends);
    for (int number = 0; number < backends.size(); ++number) {
        auto* const row = new QListWidgetItem(labels[number], rows);
        row->setData(Qt::UserRole, backends[number]);
        row->setToolTip(Utilities::ModelViews::toolTipText(files.getLocation(backends[number])));
    }

    auto* const column = new QVBoxLayout(this);
    auto* const label = new PlainLabel(tr("&Files that are open:"));
    label->setBuddy(filter);
    column->addWidget(label);
    column->addWidget(filter);
    column->addWidget(rows, 1);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    choose = buttons->addButton(verb, QDialogButtonBox::AcceptRole);
    column->addWidget(buttons);
    choose->setDefault(true); // once it is in the dialog, or another button is
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(filter, &QLineEdit::textChanged, this, &BackendChooser::narrow);
    connect(rows, &QListWidget::itemSelectionChanged, this, &BackendChooser::showState);
    connect(rows, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    showState();
}

void BackendChooser::narrow(const QString& typed)
{
    rows->clearSelection();
    rows->setCurrentItem(nullptr);
    for (int number = 0; number < rows->count(); ++number) {
        QListWidgetItem& row = *rows->item(number);
        const bool isShown = row.text().contains(typed, Qt::CaseInsensitive) ||
                             row.data(Qt::UserRole).toString().contains(typed, Qt::CaseInsensitive);
        row.setHidden(!isShown);
        if (isShown && !typed.isEmpty() && !rows->currentItem())
            rows->setCurrentItem(&row);
    }
    showState();
}

void BackendChooser::showState()
{
    const int count = getChosen().size();
    choose->setEnabled(count > 0);
    choose->setText(count > 1 ? tr("%1 (%2)").arg(verb, QString::number(count)) : verb);
}

QStringList BackendChooser::getChosen() const
{
    QStringList chosen;
    const auto selected = rows->selectedItems();
    for (const QListWidgetItem* const row : selected) {
        if (!row->isHidden())
            chosen.append(row->data(Qt::UserRole).toString());
    }
    return chosen;
}

// The arrows lead from the field through the rows.
bool BackendChooser::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == filter && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            QCoreApplication::sendEvent(rows, event);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace Vantry
