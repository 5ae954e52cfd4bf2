#pragma once

#include "host/Utilities/ModelViews/Widgets/LongTextDelegate.h"

namespace Widgets {

// Draws a cell that reaches out of sight at the right within the part that is seen: what stands at its right
// end, as numbers do, would not be seen otherwise. Its view must draw anew when it scrolls sideways.
class VisiblePartDelegate : public Utilities::ModelViews::Widgets::LongTextDelegate
{
    Q_OBJECT

public:
    using LongTextDelegate::LongTextDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};

} // namespace Widgets
