#pragma once

#include "host/FrameworkCore/AppConfig/Outcome.h"
#include "host/FrameworkCore/CoreExport.h"

#include <QString>

#include <memory>

namespace FrameworkCore::AppConfig::Interfaces {

// Undo and redo of what a person changes below the roots of backends. Recorded is what the editing thread
// does, and what any thread does within a step of its own; everything else costs nothing and cannot be
// undone. Steps are kept as long as they fit a bound of memory, the oldest going first; those of a backend go
// when it is closed. Any thread; refusals are logged with their reason.
class VANTRY_CORE_EXPORT HistoryInterface
{
public:
    // Ends the step when it is destroyed, on the thread that began it.
    class Step
    {
    public:
        virtual ~Step() = default;
    };

    virtual ~HistoryInterface() = default;

    // Makes the calling thread the editing thread.
    virtual void recordThisThread() = 0;

    // All that this thread changes until the handle is gone is one step of that name, which is shown to
    // people ("Paste supplies"). A step within a step belongs to the outer one. One that changes nothing
    // leaves no trace.
    virtual std::unique_ptr<Step> beginStep(const QString& name) = 0;

    // Takes back the newest step, and does it again. All or nothing: refused when one of its attributes has
    // got another value meanwhile. Watchers are notified as of any change. NotFound when there is none.
    virtual Outcome undo() = 0;
    virtual Outcome redo() = 0;

    // Names of the steps that undo and redo would take; empty when there is none.
    virtual QString getUndoName() const = 0;
    virtual QString getRedoName() const = 0;
};

} // namespace FrameworkCore::AppConfig::Interfaces
