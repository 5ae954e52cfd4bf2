#pragma once

#include "host/FrameworkCore/AppConfig/TextInterface.h"

#include <QToolButton>

namespace Vantry {

// Says in the status bar where the selected attribute is in its file; its tool tip adds the comment, its menu
// has what can be done with the place. GUI thread.
class PlaceButton : public QToolButton
{
    Q_OBJECT

public:
    using TextPlace = FrameworkCore::AppConfig::Interfaces::TextPlace;

    explicit PlaceButton(QWidget* parent = nullptr);

    // Nothing is shown for a place without a line.
    void showPlace(const TextPlace& place);
};

} // namespace Vantry
