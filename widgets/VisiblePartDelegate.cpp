#include "widgets/VisiblePartDelegate.h"

#include <QAbstractItemView>

namespace Widgets {

void VisiblePartDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const
{
    QStyleOptionViewItem visible(option);
    if (const auto* const view = qobject_cast<const QAbstractItemView*>(option.widget))
        visible.rect.setRight(qMin(option.rect.right(), view->viewport()->rect().right()));
    LongTextDelegate::paint(painter, visible, index);
}

} // namespace Widgets
