#pragma once

#include "host/Utilities/ApplicationPlugins/ApplicationPlugin.h"
#include "host/Utilities/ApplicationPlugins/PluginEntryPoints.h"

#include <QLibrary>
#include <QString>
#include <QStringList>

#include <memory>

namespace Vantry {

// One plug-in file with its entry points. The file stays mapped until the process ends, since data of its own
// may still be shared; what comes and goes are the applications. GUI thread.
class PluginLibrary
{
public:
    using Context = std::shared_ptr<const Shared::GuiContexts::ReaderInterface>;
    using Application = std::shared_ptr<Utilities::ApplicationPlugins::ApplicationPlugin>;

    // Loads the file, with all that it needs. Null, with the reason, when it is not a plug-in or was built
    // against another contract.
    static std::unique_ptr<PluginLibrary> load(const QString& file, QString& reason);

    const QString& getFile() const { return file; }

    // Names of the applications that it offers.
    const QStringList& getIdentifications() const { return identifications; }

    // The application of that context, made if need be. Null, with the reason, when the plug-in has failed.
    Application createApplication(const Context& context, const QString& identification,
                                  QString& reason) const;

    // Gives what it threw; empty as a rule.
    QString dropApplication(const Context& context, const QString& identification) const;

private:
    using NameApplications = decltype(&loadApplicationIdentifier);
    using LoadApplication = decltype(&loadApplicationByIdentification);
    using UnloadApplication = decltype(&unloadApplicationByIdentification);

    explicit PluginLibrary(const QString& file);

    QString identify(NameApplications nameApplications); // empty, or why it offers nothing

    template <typename Function>
    Function resolve(const char* name, QString& reason);

    QString file;
    QLibrary library;
    LoadApplication loadApplication = nullptr;
    UnloadApplication unloadApplication = nullptr;
    QStringList identifications;
};

} // namespace Vantry
