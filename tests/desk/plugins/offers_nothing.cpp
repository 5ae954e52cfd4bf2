#include "tests/desk/plugins/EntryPoints.h"

bool loadApplicationIdentifier(void*, QStringList&)
{
    return true;
}

bool loadApplicationByIdentification(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>&,
                                     const QString&,
                                     std::shared_ptr<Utilities::ApplicationPlugins::ApplicationPlugin>&)
{
    return false;
}

bool unloadApplicationByIdentification(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>&,
                                       const QString&)
{
    return false;
}
