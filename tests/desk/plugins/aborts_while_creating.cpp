#include "tests/desk/plugins/EntryPoints.h"

#include <cstdlib>

bool loadApplicationIdentifier(void*, QStringList& identifications)
{
    identifications.append(QStringLiteral("aborts"));
    return true;
}

bool loadApplicationByIdentification(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>&,
                                     const QString&,
                                     std::shared_ptr<Utilities::ApplicationPlugins::ApplicationPlugin>&)
{
    std::abort();
}

bool unloadApplicationByIdentification(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>&,
                                       const QString&)
{
    return false;
}
