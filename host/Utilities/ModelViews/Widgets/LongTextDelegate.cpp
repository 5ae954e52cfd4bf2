#include "host/Utilities/ModelViews/Widgets/LongTextDelegate.h"

#include "host/Utilities/ModelViews/TextBeginning.h"

namespace Utilities::ModelViews::Widgets {

LongTextDelegate::LongTextDelegate(QObject* parent, Qt::TextElideMode mode)
    : QStyledItemDelegate(parent), leftOut(mode)
{
}

QString LongTextDelegate::displayText(const QVariant& value, const QLocale& locale) const
{
    constexpr int longest = 500; // characters
    constexpr int mostLines = 20;
    if (value.userType() != QMetaType::QString)
        return QStyledItemDelegate::displayText(value, locale);
    QString text = value.toString();
    constexpr int end = longest / 2 - 1;
    if (leftOut == Qt::ElideMiddle && text.size() > longest)
        text = text.left(end) + QChar(0x2026) + text.right(end);
    return QStyledItemDelegate::displayText(shortened(text, longest, mostLines), locale);
}

} // namespace Utilities::ModelViews::Widgets
