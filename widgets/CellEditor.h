#pragma once

class QAbstractItemView;
class QModelIndex;
class QWidget;

namespace Widgets {

// What the editors of values share, and the views that put them over a cell.

// Shows the editor over the cell, which it covers whole, and gives it the keyboard. The view owns it from
// then on. It may be used up when this returns: a view of which the cell is gone takes no editor.
void placeOverCell(QAbstractItemView& view, const QModelIndex& cell, QWidget& editor);

// Whether the editor was shown and then hidden: its view has taken it away. That takes the focus from it too,
// but nobody has left the cell, so an editor ends nothing by it.
bool isTakenAway(const QWidget& editor);

} // namespace Widgets
