#pragma once

#include <QStyledItemDelegate>

namespace Widgets {

// Draws a cell that reaches out of sight at the right within the part that is seen: what stands at its right
// end, as numbers do, would not be seen otherwise. Its view must draw anew when it scrolls sideways.
class SeenPartDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};

} // namespace Widgets
