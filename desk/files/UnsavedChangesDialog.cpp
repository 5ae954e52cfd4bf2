#include "desk/files/UnsavedChangesDialog.h"

#include "desk/files/DiffText.h"
#include "desk/files/DiffView.h"
#include "host/Utilities/GuiThread.h"
#include "host/Utilities/ModelViews/Widgets/BreakableText.h"
#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"
#include "host/Utilities/Worker.h"

#include <QDialogButtonBox>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace Vantry {

UnsavedChangesDialog::UnsavedChangesDialog(const QString& question, const std::vector<Edited>& edited,
                                           const std::shared_ptr<ChangesInterface>& changes, QWidget* parent)
    : QDialog(parent), view(new DiffView)
{
    setObjectName(QStringLiteral("unsavedChanges"));
    setWindowTitle(tr("Unsaved Changes"));
    resize(720, 480);
    auto* const column = new QVBoxLayout(this);
    using namespace Utilities::ModelViews::Widgets;
    auto* const label = new PlainLabel(breakableText(question));
    label->setWordWrap(true);
    column->addWidget(label);
    column->addWidget(view, 1);
    view->setPlaceholderText(tr("Looking for the differences..."));

    auto* const buttons =
        new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Discard | QDialogButtonBox::Cancel);
    QPushButton* const save = buttons->button(QDialogButtonBox::Save);
    save->setText(edited.size() > 1 ? tr("&Save All") : tr("&Save"));
    save->setDefault(true);
    buttons->button(QDialogButtonBox::Discard)->setText(tr("&Discard"));
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        answer = Answer::Save;
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(buttons->button(QDialogButtonBox::Discard), &QPushButton::clicked, this, [this] {
        answer = Answer::Discard;
        accept();
    });
    column->addWidget(buttons);
    save->setFocus();
    QString failure;
    worker = Utilities::startWorker([this, edited, changes] { findDifferences(edited, *changes); }, failure);
    if (!worker.valid())
        addDifference(tr("The differences cannot be shown: %1").arg(failure));
}

UnsavedChangesDialog::Answer UnsavedChangesDialog::ask()
{
    exec();
    return answer;
}

void UnsavedChangesDialog::addDifference(const QString& text)
{
    view->setPlainText(view->toPlainText().isEmpty() ? text : view->toPlainText() + QLatin1Char('\n') + text);
}

// On the worker. What it tells comes later than the dialog's end, if that is quicker.
void UnsavedChangesDialog::findDifferences(const std::vector<Edited>& edited, ChangesInterface& changes)
{
    const QPointer<UnsavedChangesDialog> self(this);
    for (const Edited& each : edited) {
        if (isOver)
            return;
        const QString text = differenceOf(each, changes);
        Utilities::postToGuiThread([self, text] {
            if (self)
                self->addDifference(text);
        });
    }
}

QString UnsavedChangesDialog::differenceOf(const Edited& edited, ChangesInterface& changes)
{
    try {
        QString diff;
        changes.getUnsavedDiff(edited.backend, diff);
        const QString text = DiffText::shortened(diff);
        if (!text.isEmpty())
            return text;
    } catch (...) {
        return tr("%1\nIts differences cannot be shown: %2\n").arg(edited.label, Utilities::currentFailure());
    }
    return tr("%1\nNothing that can be shown: its file is gone, or its values must not be read.\n")
        .arg(edited.label);
}

} // namespace Vantry
