#include "app/VantryApplication.h"

#include "app/VantryControl.h"
#include "app/VantryMain.h"

using Utilities::ApplicationWidgets::ApplicationWidget;

// What the base is made from, in the order of its making; owns the widgets until the base has them.
struct VantryApplication::Parts
{
    Parts(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader,
          const Vantry::ModuleFileLookup& lookup)
        : identification(QString::fromLatin1("Vantry")), moduleFile(Vantry::moduleFile(lookup)),
          mainWidget(std::make_unique<VantryMain>(reader)),
          controlWidget(std::make_unique<VantryControl>(reader)),
          icon(QLatin1String(":/") + identification + QLatin1String("/Resources/icon.ico"))
    {
    }

    QString identification;
    QFileInfo moduleFile;
    std::unique_ptr<ApplicationWidget> mainWidget;
    std::unique_ptr<ApplicationWidget> controlWidget;
    QIcon icon;
};

VantryApplication::VantryApplication(
    const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader,
    const Vantry::ModuleFileLookup& lookup)
    : VantryApplication(reader, Parts(reader, lookup))
{
}

VantryApplication::VantryApplication(
    const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader, Parts parts)
    : ApplicationPlugin(reader, Utilities::ApplicationType::Window, parts.identification, parts.icon,
                        parts.controlWidget.get(), parts.mainWidget.get(), QString(), parts.moduleFile)
{
    parts.controlWidget.release();
    parts.mainWidget.release();
}

QString VantryApplication::getApplicationName() const
{
    return tr("Vantry");
}
