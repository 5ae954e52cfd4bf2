#pragma once

class QAbstractItemView;
class QModelIndex;
class QString;
class QVariant;
class QWidget;

namespace Widgets {

// What the editors of values share, and the views that put them over a cell.

// What a value is edited in.
enum class EditorKind { None, Line, CheckBox, List, DateTime };

EditorKind editorKindOf(const QVariant& value);

// Shows the editor over the cell, which it covers whole, in a frame, and gives it the keyboard. The view owns
// it from then on.
void placeOverCell(QAbstractItemView& view, const QModelIndex& cell, QWidget& editor);

// Whether the editor was shown and then hidden: its view has taken it away. That takes the focus from it too,
// but nobody has left the cell, so an editor ends nothing by it.
bool isTakenAway(const QWidget& editor);

// Whether a text is edited in a line, which lays out all of it anew with each key; otherwise the reason for
// people is given.
bool isLineEditable(const QString& text, QString& reason);

} // namespace Widgets
