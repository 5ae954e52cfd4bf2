#pragma once

class QWidget;

namespace Vantry {

// Ends the edit of a cell in the window, if there is one, as when its editor loses the keyboard: what is
// typed becomes the value. The cell's view has the keyboard then. GUI thread.
void endCellEdit(const QWidget& window);

} // namespace Vantry
