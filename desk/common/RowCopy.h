#pragma once

class QAction;
class QTreeView;

namespace Vantry {

// Lets a person copy the selected rows of a list by a key, as they are shown, with tabulators between their
// cells. Several can be selected then. The action, also for a menu, belongs to the list. GUI thread.
QAction* addRowCopy(QTreeView& list);

} // namespace Vantry
