#pragma once

#include "host/Shared/GuiContexts/ReaderInterface.h"
#include "host/Utilities/ApplicationPlugins/ContractVersion.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace Utilities::ApplicationPlugins {
class ApplicationPlugin;
}

// What a plug-in defines, beside the number applicationContractVersion of ContractVersion.h, so that a host
// can use it. The names are the whole of the interface: a host resolves them in the loaded file.
//
// Life: the host loads the file, compares the contract's version, asks once for the names of the
// applications, and then for an application of each name for each of its GUI contexts, as a rule a window.
// When a context ends, the host unloads its applications and drops its own references; what the last one held
// ends with it, its widgets on the GUI thread. vantry-desk keeps the file mapped until the process ends,
// other hosts may unmap it once all applications have ended; nothing of the plug-in, such as a thread, a
// callback or a literal text that the host was given, may be in use by then.
//
// Threads: a host may call from any. vantry-desk calls on the GUI thread, where widgets must be made;
// ApplicationInstanceToContextMapper brings the making there from any other.
//
// An exception of any of them is a failure of this plug-in, which vantry-desk shows with its text; everything
// else goes on. Resources and translations that are compiled into the file are registered by Qt when it is
// loaded.
extern "C" {

// Appends the names of the applications that the plug-in offers, each not empty and unlike those of other
// plug-ins, and gives true; false for none. host belongs to the host and is kept for it: vantry-desk passes
// null, plug-ins leave it alone.
Q_DECL_EXPORT bool loadApplicationIdentifier(void* host, QStringList& identifications);

// Gives the application of that context and name, made if need be: the same one until it is unloaded, which
// host and plug-in own together. False, and an empty result, when there is none. The context may be empty.
Q_DECL_EXPORT bool
loadApplicationByIdentification(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader,
                                const QString& identification,
                                std::shared_ptr<Utilities::ApplicationPlugins::ApplicationPlugin>& result);

// Drops the plug-in's own reference to that application. False when there was none.
Q_DECL_EXPORT bool
unloadApplicationByIdentification(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader,
                                  const QString& identification);
}
