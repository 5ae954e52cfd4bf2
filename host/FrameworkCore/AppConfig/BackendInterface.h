#pragma once

#include "host/FrameworkCore/AppConfig/BackendConfiguration.h"
#include "host/FrameworkCore/AppConfig/BackendInformationInterface.h"

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
};

} // namespace FrameworkCore::AppConfig::Interfaces
