#pragma once

#include "host/HostExport.h"

#include <QStringList>

namespace Shared::GuiContexts {

// One context of the host's user interface, a window for example, into which plug-ins are loaded. Any thread.
class VANTRY_HOST_EXPORT ReaderInterface
{
public:
    virtual ~ReaderInterface() = default;

    // Path components under which the context keeps its attributes; the same for the whole life of the
    // context.
    virtual QStringList getContextPath() const = 0;
};

} // namespace Shared::GuiContexts
