#pragma once

class QWidget;

namespace Widgets {

// Deletes the window, should it still be there, when the page goes. A window that a page opens has no parent,
// and would otherwise stay after the page and after the module that both have their code from. GUI thread.
void deleteWith(QWidget& page, QWidget& window);

} // namespace Widgets
