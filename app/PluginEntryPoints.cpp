#include "host/Utilities/ApplicationPlugins/PluginEntryPoints.h"

#include "app/VantryApplication.h"
#include "host/Shared/Logging/LogHandler.h"
#include "host/Utilities/ApplicationPlugins/ApplicationInstanceToContextMapper.h"

#include <mutex>

// The first call of each names the process's log, so the last of these names stays.

using Shared::GuiContexts::ReaderInterface;
using Shared::Logging::LogHandler;
using Utilities::ApplicationPlugins::ApplicationPlugin;

namespace {

using InstanceTable = Utilities::ApplicationPlugins::ApplicationInstanceToContextMapper<VantryApplication>;

InstanceTable& instanceTable()
{
    static InstanceTable table;
    return table;
}

} // namespace

const int applicationContractVersion = Utilities::ApplicationPlugins::ContractVersion;

bool loadApplicationIdentifier(void* /*host*/, QStringList& identifications)
{
    static std::once_flag named;
    const QString identification = QString::fromLatin1("Vantry");
    std::call_once(named, [&] { LogHandler::SetLogIdentification(identification); });
    identifications.append(identification);
    return true;
}

// Whatever the identification is.
bool loadApplicationByIdentification(const std::shared_ptr<const ReaderInterface>& reader,
                                     const QString& identification,
                                     std::shared_ptr<ApplicationPlugin>& result)
{
    static std::once_flag named;
    std::call_once(named, [&] { LogHandler::SetLogIdentification(identification); });
    result = instanceTable().getOrCreate(reader, identification);
    return result != nullptr;
}

bool unloadApplicationByIdentification(const std::shared_ptr<const ReaderInterface>& reader,
                                       const QString& identification)
{
    static std::once_flag named;
    std::call_once(named, [&] { LogHandler::SetLogIdentification(identification); });
    return instanceTable().remove(reader, identification) > 0;
}
