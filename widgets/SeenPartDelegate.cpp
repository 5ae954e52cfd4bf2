#include "widgets/SeenPartDelegate.h"

#include <QAbstractItemView>

namespace Widgets {

void SeenPartDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const
{
    QStyleOptionViewItem seen(option);
    if (const auto* const view = qobject_cast<const QAbstractItemView*>(option.widget))
        seen.rect.setRight(qMin(option.rect.right(), view->viewport()->rect().right()));
    LongTextDelegate::paint(painter, seen, index);
}

} // namespace Widgets
