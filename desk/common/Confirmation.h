#pragma once

#include "host/Utilities/ModelViews/Widgets/PlainMessageBox.h"

#include <QCoreApplication>

namespace Vantry {

// Asks before an act that a person may regret. What Undo brings back says so, and need not be asked about
// again. GUI thread.
class Confirmation
{
    Q_DECLARE_TR_FUNCTIONS(Vantry::Confirmation)

public:
    enum class Act { Delete, Revert, Replace, DiscardKept };

    Confirmation(Act act, const QString& title, const QString& question, QWidget* window);

    // What it is done to, below the question.
    void setSubject(const QString& subject);

    // The verb is that of the button. True as well when the person wants not to be asked.
    bool ask(const QString& verb);

    // Whether some acts are not asked about, and that all are again.
    static bool isAnyUnasked();
    static void askAgain();

private:
    const Act act;
    const bool hasUndo;
    Utilities::ModelViews::Widgets::PlainMessageBox box;
};

} // namespace Vantry
