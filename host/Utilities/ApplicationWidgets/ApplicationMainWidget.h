#pragma once

#include "host/Utilities/ApplicationWidgets/ApplicationWidget.h"

namespace Utilities::ApplicationWidgets {

// The widget that a host shows in its work area.
class VANTRY_HOST_EXPORT ApplicationMainWidget : public ApplicationWidget
{
    Q_OBJECT

public:
    ApplicationMainWidget(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader,
                          const QString& identification, QWidget* parent);
    ~ApplicationMainWidget() override;
};

} // namespace Utilities::ApplicationWidgets
