#include "desk/UnsavedChangesDialog.h"

#include "desk/DiffText.h"
#include "desk/DiffView.h"
#include "host/Utilities/GuiThread.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QThreadPool>
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
    auto* const label = new QLabel(question);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    column->addWidget(label);
    column->addWidget(view, 1);
    view->setPlaceholderText(tr("Looking for the differences..."));

    auto* const buttons =
        new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Discard | QDialogButtonBox::Cancel);
    QPushButton* const save = buttons->button(QDialogButtonBox::Save);
    save->setText(edited.size() > 1 ? tr("&Save All") : tr("&Save"));
    save->setDefault(true);
    save->setFocus();
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
    findDifferences(edited, changes);
}

UnsavedChangesDialog::Answer UnsavedChangesDialog::ask()
{
    exec();
    return answer;
}

void UnsavedChangesDialog::show(int number, const QString& text)
{
    view->setPlainText(number == 0 ? text : view->toPlainText() + QLatin1Char('\n') + text);
}

// On another thread, which outlives the dialog where the person is quicker.
void UnsavedChangesDialog::findDifferences(const std::vector<Edited>& edited,
                                           const std::shared_ptr<ChangesInterface>& changes)
{
    const QPointer<UnsavedChangesDialog> self(this);
    QThreadPool::globalInstance()->start([self, edited, changes] {
        for (std::size_t number = 0; number < edited.size(); ++number) {
            QString text = DiffText::shortened(changes->getUnsavedDiff(edited[number].backend));
            if (text.isEmpty())
                text =
                    tr("%1\nNothing that can be shown: its file is gone, or its values must not be read.\n")
                        .arg(edited[number].label);
            Utilities::postToGuiThread([self, number, text] {
                if (self)
                    self->show(int(number), text);
            });
        }
    });
}

} // namespace Vantry
