#include "host/Utilities/GuiContextVisitor.h"

namespace Utilities {

GuiContextVisitor::GuiContextVisitor(std::shared_ptr<const Shared::GuiContexts::ReaderInterface> reader)
    : guiContextReader(std::move(reader))
{
}

GuiContextVisitor::~GuiContextVisitor() = default;

const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>&
GuiContextVisitor::getGuiContextReader() const
{
    return guiContextReader;
}

QString GuiContextVisitor::buildContextPath(const QStringList& components) const
{
    const auto appConfig = getAppConfig();
    if (!appConfig)
        return {};
    const QStringList context = guiContextReader ? guiContextReader->getContextPath() : QStringList();
    return appConfig->buildAttributePath(context + components);
}

} // namespace Utilities
