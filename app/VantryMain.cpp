#include "app/VantryMain.h"

#include "app/ModuleConstants.h"
#include "host/Utilities/AbstractButtonsToAttributeValueMapper.h"
#include "host/Utilities/NotificationWrapper.h"
#include "host/Utilities/RepositoryAccess.h"
#include "ui_VantryMain.h"

#include <QWriteLocker>

using Vantry::BrowserMode;

VantryMain::VantryMain(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader)
    : ApplicationMainWidget(reader, QString::fromLatin1("Vantry"), nullptr),
      watcher(std::make_shared<Utilities::NotificationWrapper>(Vantry::browserModePath(*this), true, false)),
      ui(std::make_unique<Ui::VantryMain>())
{
    ui->setupUi(this);
    watchBrowserMode();
    mapButtons();
}

VantryMain::~VantryMain() = default;

void VantryMain::watchBrowserMode()
{
    {
        const QWriteLocker locker(&watcher->lock);
        watcher->valueChangedCallbacks.append([this](const QVariant& value) { showPage(value.toString()); });
    }
    watcher->setActive(true);
}

void VantryMain::mapButtons()
{
    auto* const mapper = new Utilities::AbstractButtonsToAttributeValueMapper(
        this, Utilities::GetAppConfigRepositoryInterface(), Vantry::browserModePath(*this));
    mapper->addButtonToValueMapping(ui->btnSelectAttributes, BrowserMode.at(1));
    mapper->addButtonToValueMapping(ui->btnSelectBackends, BrowserMode.at(2));
    mapper->addButtonToValueMapping(ui->btnTests, BrowserMode.at(3));
}

void VantryMain::showPage(const QString& name)
{
    ui->appConfigPages->setCurrentIndex(qMax(0, BrowserMode.indexOf(name)));
}
