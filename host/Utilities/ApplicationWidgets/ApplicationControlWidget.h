#pragma once

#include "host/Utilities/ApplicationWidgets/ApplicationWidget.h"

namespace Utilities::ApplicationWidgets {

// The widget that a host shows in its navigation area.
class VANTRY_HOST_EXPORT ApplicationControlWidget : public ApplicationWidget
{
    Q_OBJECT

public:
    ApplicationControlWidget(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader,
                             const QString& identification, QWidget* parent);
    ~ApplicationControlWidget() override;
};

} // namespace Utilities::ApplicationWidgets
