#pragma once

#include "host/Shared/GuiContexts/ReaderInterface.h"
#include "host/Utilities/FrameworkVisitor.h"

namespace Utilities {

// Mix-in: holds the GUI context that an application or widget was made for.
class VANTRY_HOST_EXPORT GuiContextVisitor : public FrameworkVisitor
{
public:
    explicit GuiContextVisitor(std::shared_ptr<const Shared::GuiContexts::ReaderInterface> reader);
    ~GuiContextVisitor() override;

    // Empty when the class was made for no context.
    const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& getGuiContextReader() const;

    // Path of an attribute that belongs to an application in this context: the context's own components, then
    // the given ones. Empty when there is no repository to build it.
    QString buildContextPath(const QStringList& components) const;

private:
    std::shared_ptr<const Shared::GuiContexts::ReaderInterface> guiContextReader;
};

} // namespace Utilities
