#pragma once

#include "app/ModuleFile.h"
#include "host/Utilities/ApplicationPlugins/ApplicationPlugin.h"

#include <QCoreApplication>

// The application that the plug-in gives to its host for one GUI context: a control panel and a main widget,
// with the identification, icon and file by which the host knows it. GUI thread.
class VantryApplication : public Utilities::ApplicationPlugins::ApplicationPlugin
{
    Q_DECLARE_TR_FUNCTIONS(VantryApplication)

public:
    explicit VantryApplication(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader,
                               const Vantry::ModuleFileLookup& lookup = &Vantry::lookUpModuleFile);

    QString getApplicationName() const override;

private:
    struct Parts;

    VantryApplication(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader, Parts parts);
};
