#include "tests/desk/plugins/EntryPoints.h"

#include <stdexcept>

bool loadApplicationIdentifier(void*, QStringList& identifications)
{
    identifications += {QStringLiteral("throws"), QStringLiteral("makesNothing")};
    return true;
}

bool loadApplicationByIdentification(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>&,
                                     const QString& identification,
                                     std::shared_ptr<Utilities::ApplicationPlugins::ApplicationPlugin>&)
{
    if (identification == QLatin1String("throws"))
        throw std::runtime_error("no licence");
    return false;
}

bool unloadApplicationByIdentification(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>&,
                                       const QString&)
{
    return false;
}
