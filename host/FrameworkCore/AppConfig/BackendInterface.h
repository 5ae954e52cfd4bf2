#pragma once

#include "host/FrameworkCore/AppConfig/BackendConfiguration.h"
#include "host/FrameworkCore/AppConfig/BackendInformationInterface.h"
#include "host/FrameworkCore/AppConfig/Outcome.h"

#include <QStringList>

#include <memory>

namespace FrameworkCore::AppConfig::Interfaces {

// Backends: files mounted at a place of the tree. Any thread; every refusal is logged with its reason.
class VANTRY_CORE_EXPORT BackendInterface
{
public:
    virtual ~BackendInterface() = default;

    // Mounts the file named by the configuration's location; the backend's name is the path of its root.
    // A file that exists is loaded; one that does not is created at the first save (refused for read-only).
    // Option 2 refuses a name in use; option 3 reloads the backend of that name when file, type and mode
    // agree. False, and nothing changes, when the file cannot be read or parsed, or name, place or type do
    // not serve.
    virtual bool createBackend(const QString& type, const QString& name,
                               const BackendConfiguration& configuration, const int& option) = 0;

    // Writes the backend's edits into its file; without edits the file is not touched. False when nothing was
    // written although there was something to write; the edits then stay in memory.
    virtual bool saveBackend(const QString& name) = 0;

    // Names of all backends, in the order of their creation.
    virtual QStringList getBackendNames() = 0;

    // Empty when there is no backend of that name.
    virtual std::shared_ptr<BackendInformationInterface> getBackendInformation(const QString& name) = 0;

    // Reads the backend's file anew. Edits are kept; where the file has changed what was edited, they are a
    // conflict (see ChangesInterface). Refused when the file cannot be read or parsed; nothing changes then.
    // A repository that does not override it reloads nothing.
    virtual Outcome reloadBackend(const QString& /*name*/)
    {
        return {BackendFailure, QStringLiteral("this repository reloads nothing")};
    }

    // Takes the backend and its attributes out of the tree and leaves its file alone; watchers hear
    // "removed". Other backends that are mounted below it stay. Refused when there are unsaved changes that
    // are not to be discarded. A repository that does not override it closes nothing.
    virtual Outcome closeBackend(const QString& /*name*/, bool /*discardChanges*/)
    {
        return {BackendFailure, QStringLiteral("this repository closes nothing")};
    }

    // createBackend and saveBackend with all that is known of a refusal, and the warnings of a success; of a
    // repository that does not override them, no more than whether it worked.
    virtual Outcome mount(const QString& type, const QString& name, const BackendConfiguration& configuration,
                          int option)
    {
        return createBackend(type, name, configuration, option)
                   ? Outcome()
                   : Outcome(BackendFailure, QStringLiteral("the log says why"));
    }
    virtual Outcome save(const QString& name)
    {
        return saveBackend(name) ? Outcome() : Outcome(BackendFailure, QStringLiteral("the log says why"));
    }

    // While a backend is locked, whatever would edit it is refused, undo and redo too; its attributes are
    // read-only, or none. What was edited before may be saved or reverted, and what other programs write
    // comes in. With a folder go all its files, also those that come later. A repository that does not
    // override it locks nothing.
    virtual Outcome setLocked(const QString& /*name*/, bool /*isLocked*/)
    {
        return {BackendFailure, QStringLiteral("this repository locks nothing")};
    }
    virtual QStringList getLockedBackends() { return {}; } // in the order of their creation
};

} // namespace FrameworkCore::AppConfig::Interfaces
