#pragma once

#include "host/Utilities/ApplicationWidgets/ApplicationControlWidget.h"

namespace Ui {
class VantryControl;
}

// The panel in the host's navigation area. Its buttons write the name of a page into the browser mode
// attribute, which the main widget watches. Without a repository it stays disabled.
class VantryControl : public Utilities::ApplicationWidgets::ApplicationControlWidget
{
    Q_OBJECT

public:
    explicit VantryControl(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader);
    ~VantryControl() override;

private:
    std::unique_ptr<Ui::VantryControl> ui;
};
