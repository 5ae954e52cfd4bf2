#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace Vantry {

// Does work on the repository that may be long: on a thread of its own, while the window waits and is drawn;
// where there is none, on that of the window.
// Gives why some of it was refused, of the outcomes that the work notes. GUI thread.
using NoteOutcome = std::function<void(const FrameworkCore::AppConfig::Outcome& outcome)>;
using LongWork = std::function<void(const NoteOutcome& note)>;
QStringList refusalsOf(const QString& title,
                       FrameworkCore::AppConfig::Interfaces::RepositoryInterface& repository,
                       const LongWork& work);

// The same for edits, which become one step of undo with the title as its name.
QStringList refusalsOfStep(const QString& title,
                           FrameworkCore::AppConfig::Interfaces::RepositoryInterface& repository,
                           const LongWork& work);

} // namespace Vantry
