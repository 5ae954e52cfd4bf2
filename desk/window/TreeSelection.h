#pragma once

#include <QString>

class QWidget;

namespace Vantry {

// Selects the attribute of that path in the tree of a page, and scrolls to it. False when no tree of the page
// shows it. GUI thread.
bool selectInTree(QWidget& page, const QString& path);

} // namespace Vantry
