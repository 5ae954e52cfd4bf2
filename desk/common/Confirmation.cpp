#include "desk/common/Confirmation.h"

#include <QCheckBox>
#include <QPushButton>
#include <QSettings>

namespace Vantry {

using Utilities::ModelViews::Widgets::PlainMessageBox;

namespace {

const QLatin1String unaskedKey("unaskedActs");

// By which it is remembered.
QString nameOf(Confirmation::Act act)
{
    switch (act) {
    case Confirmation::Act::Delete:
        return QStringLiteral("delete");
    case Confirmation::Act::Revert:
        return QStringLiteral("revert");
    case Confirmation::Act::Replace:
        return QStringLiteral("replace");
    case Confirmation::Act::DiscardKept:
        break;
    }
    return {};
}

QStringList unaskedActs()
{
    return QSettings().value(unaskedKey).toStringList();
}

} // namespace

Confirmation::Confirmation(Act questionedAct, const QString& title, const QString& question, QWidget* window)
    : act(questionedAct), hasUndo(act != Act::DiscardKept),
      box(PlainMessageBox::Question, title,
          question + QLatin1String("\n\n") +
              (hasUndo ? tr("Undo brings it back.") : tr("It cannot be brought back.")),
          PlainMessageBox::Cancel, window)
{
}

void Confirmation::setSubject(const QString& subject)
{
    box.setInformation(subject);
}

bool Confirmation::ask(const QString& verb)
{
    QStringList unasked = unaskedActs();
    if (unasked.contains(nameOf(act)))
        return true;
    const QAbstractButton* const go = box.addButton(verb, PlainMessageBox::AcceptRole);
    box.setDefaultButton(PlainMessageBox::Cancel);
    QCheckBox* notAgain = nullptr; // owned by the box
    if (hasUndo) {
        notAgain = new QCheckBox(tr("Do &not ask again before this"));
        box.setCheckBox(notAgain);
    }
    box.exec();
    if (box.clickedButton() != go)
        return false;
    if (notAgain && notAgain->isChecked())
        QSettings().setValue(unaskedKey, unasked << nameOf(act));
    return true;
}

bool Confirmation::isAnyUnasked()
{
    return !unaskedActs().isEmpty();
}

void Confirmation::askAgain()
{
    QSettings().remove(unaskedKey);
}

} // namespace Vantry
