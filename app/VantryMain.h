#pragma once

#include "host/Utilities/ApplicationWidgets/ApplicationMainWidget.h"

namespace Ui {
class VantryMain;
}

namespace Utilities {
class NotificationWrapper;
}

// The widget in the host's work area: a stack of pages, of which it shows the one that the browser mode
// attribute names, or a warning with a button for each page when it names none.
class VantryMain : public Utilities::ApplicationWidgets::ApplicationMainWidget
{
    Q_OBJECT

public:
    explicit VantryMain(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader);
    ~VantryMain() override;

private:
    void watchBrowserMode();
    void mapButtons();
    void showPage(const QString& name);

    std::shared_ptr<Utilities::NotificationWrapper> watcher;
    std::unique_ptr<Ui::VantryMain> ui;
};
