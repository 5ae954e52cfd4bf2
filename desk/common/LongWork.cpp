#include "desk/common/LongWork.h"

#include "desk/common/ReadableText.h"
#include "desk/common/WaitCursor.h"
#include "host/Utilities/ModelViews/Widgets/TransferWindow.h"

namespace Vantry {

using FrameworkCore::AppConfig::Outcome;
using Utilities::ModelViews::Widgets::TransferWindow;

QStringList refusalsOf(const QString& title,
                       FrameworkCore::AppConfig::Interfaces::RepositoryInterface& repository,
                       const LongWork& work)
{
    const WaitCursor cursor;
    QStringList refusals;
    const NoteOutcome note = [&](const Outcome& outcome) {
        if (!outcome.ok())
            refusals.append(readableText(outcome, repository));
    };
    const auto run = [&](TransferWindow::TransferReport&) {
        work(note);
        return Outcome();
    };
    note(TransferWindow::run(title, run, TransferWindow::Cancelling::Impossible,
                             TransferWindow::WithoutThread::Block));
    return refusals;
}

// History records the thread of the window, and others only within a step.
QStringList refusalsOfStep(const QString& title,
                           FrameworkCore::AppConfig::Interfaces::RepositoryInterface& repository,
                           const LongWork& work)
{
    return refusalsOf(title, repository, [&](const NoteOutcome& note) {
        const auto history = repository.getHistoryInterface();
        const auto step = history ? history->beginStep(title) : nullptr;
        work(note);
    });
}

} // namespace Vantry
