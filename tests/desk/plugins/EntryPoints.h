#pragma once

#include "host/Utilities/ApplicationPlugins/ApplicationPlugin.h"

#include <QStringList>

#include <memory>

// The entry points of a plug-in, for those of the tests that each have one fault.
extern "C" {
Q_DECL_EXPORT bool loadApplicationIdentifier(void* host, QStringList& identifications);
Q_DECL_EXPORT bool
loadApplicationByIdentification(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader,
                                const QString& identification,
                                std::shared_ptr<Utilities::ApplicationPlugins::ApplicationPlugin>& result);
Q_DECL_EXPORT bool
unloadApplicationByIdentification(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader,
                                  const QString& identification);
}
