#include "app/VantryControl.h"

#include "app/ModuleConstants.h"
#include "host/Utilities/AbstractButtonsToAttributeValueMapper.h"
#include "host/Utilities/RepositoryAccess.h"
#include "ui_VantryControl.h"

using Vantry::BrowserMode;

VantryControl::VantryControl(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader)
    : ApplicationControlWidget(reader, QString::fromLatin1("Vantry"), nullptr),
      ui(std::make_unique<Ui::VantryControl>())
{
    ui->setupUi(this);
    const auto repository = Utilities::GetAppConfigRepositoryInterface();
    setEnabled(repository != nullptr);
    if (!repository)
        return;
    auto* const mapper = new Utilities::AbstractButtonsToAttributeValueMapper(this, repository,
                                                                              Vantry::browserModePath(*this));
    mapper->addButtonToValueMapping(ui->btnAttributes, BrowserMode.at(1));
    mapper->addButtonToValueMapping(ui->btnBackends, BrowserMode.at(2));
    mapper->addButtonToValueMapping(ui->btnTests, BrowserMode.at(3));
}

VantryControl::~VantryControl() = default;
