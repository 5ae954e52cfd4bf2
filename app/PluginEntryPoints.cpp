#include "app/VantryApplication.h"
#include "host/Shared/Logging/LogHandler.h"
#include "host/Utilities/ApplicationPlugins/ApplicationInstanceToContextMapper.h"
#include "host/Utilities/ApplicationPlugins/ContractVersion.h"

#include <QStringList>

#include <mutex>

// The three functions by which a host uses this module, on any thread, and the version of the contract
// between the two. The first call of each names the process's log, so the last of these names stays.

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

// Appends the identification of the application that this module offers.
extern "C" Q_DECL_EXPORT bool loadApplicationIdentifier(void* /*host*/, QStringList& identifications)
{
    static std::once_flag named;
    const QString identification = QString::fromLatin1("Vantry");
    std::call_once(named, [&] { LogHandler::SetLogIdentification(identification); });
    identifications.append(identification);
    return true;
}

// Gives the application of that context and identification, whatever the identification is; the same one
// until it is unloaded.
extern "C" Q_DECL_EXPORT bool
loadApplicationByIdentification(const std::shared_ptr<const ReaderInterface>& reader,
                                const QString& identification, std::shared_ptr<ApplicationPlugin>& result)
{
    static std::once_flag named;
    std::call_once(named, [&] { LogHandler::SetLogIdentification(identification); });
    result = instanceTable().getOrCreate(reader, identification);
    return result != nullptr;
}

// Forgets the application of that context and identification; it ends when the host drops it too. False when
// there was none.
extern "C" Q_DECL_EXPORT bool
unloadApplicationByIdentification(const std::shared_ptr<const ReaderInterface>& reader,
                                  const QString& identification)
{
    static std::once_flag named;
    std::call_once(named, [&] { LogHandler::SetLogIdentification(identification); });
    return instanceTable().remove(reader, identification) > 0;
}
