#include "host/Utilities/ModelViews/dialogs/ProposingTextDialog.h"

#include "host/Utilities/ModelViews/ToolTipText.h"
#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace Utilities::ModelViews::Widgets {

ProposingTextDialog::ProposingTextDialog(QWidget* parent, const QString& title, const QString& label,
                                         const QString& preset, const QVector<TextProposal>& proposals)
    : QDialog(parent), field(new QLineEdit(preset)), rows(new QTreeWidget)
{
    setWindowTitle(title);
    resize(fontMetrics().averageCharWidth() * 80, fontMetrics().lineSpacing() * 22);
    field->installEventFilter(this);
    field->setAccessibleName(label);
    addProposals(proposals);

    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const column = new QVBoxLayout(this);
    column->addWidget(new PlainLabel(label));
    column->addWidget(field);
    column->addWidget(rows, 1);
    column->addWidget(buttons);
    connect(field, &QLineEdit::textEdited, this, &ProposingTextDialog::narrow);
    connect(rows, &QTreeWidget::currentItemChanged, this, &ProposingTextDialog::take);
    connect(rows, &QTreeWidget::itemClicked, this, &ProposingTextDialog::take); // also the current one again
    connect(rows, &QTreeWidget::itemDoubleClicked, this, &QDialog::accept);
    field->setFocus();
}

void ProposingTextDialog::addProposals(const QVector<TextProposal>& proposals)
{
    rows->setObjectName(QStringLiteral("proposals"));
    rows->setAccessibleName(tr("Proposals"));
    rows->setRootIsDecorated(false);
    rows->setUniformRowHeights(true);
    rows->setHeaderLabels({tr("Proposal"), tr("Asks for")});
    rows->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    for (const TextProposal& proposal : proposals) {
        auto* const row = new QTreeWidgetItem(rows, {proposal.text, proposal.meaning});
        row->setToolTip(1, toolTipText(proposal.meaning));
    }
}

QString ProposingTextDialog::getText() const
{
    return field->text();
}

// A name that is complete, with an argument of the person's own after it, keeps its proposal in sight.
void ProposingTextDialog::narrow(const QString& typed)
{
    const QString name = typed.section(QLatin1Char('('), 0, 0).trimmed();
    for (int number = 0; number < rows->topLevelItemCount(); ++number) {
        QTreeWidgetItem& row = *rows->topLevelItem(number);
        row.setHidden(!row.text(0).contains(name, Qt::CaseInsensitive) &&
                      !row.text(1).contains(name, Qt::CaseInsensitive));
    }
}

// What is to be changed in it, its argument, is selected.
void ProposingTextDialog::take(const QTreeWidgetItem* proposal)
{
    if (!proposal)
        return;
    const QString text = proposal->text(0);
    field->setText(text);
    const int open = text.indexOf(QLatin1Char('('));
    if (open < 0)
        field->selectAll();
    else
        field->setSelection(open + 1, text.size() - open - 2);
    field->setFocus();
}

// The arrows lead from the field through the rows.
bool ProposingTextDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == field && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            QCoreApplication::sendEvent(rows, event);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace Utilities::ModelViews::Widgets
