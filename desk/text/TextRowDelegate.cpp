#include "desk/text/TextRowDelegate.h"

#include "desk/text/TextModel.h"

#include <QApplication>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>

namespace Vantry {

namespace {

constexpr int margin = 4;

QColor unsavedColour(const QPalette& palette)
{
    const bool isDark = palette.color(QPalette::Base).lightness() < 128;
    return isDark ? QColor(110, 85, 0) : QColor(255, 224, 130);
}

} // namespace

TextRowDelegate::TextRowDelegate(const TextModel& textModel, QObject* parent)
    : QStyledItemDelegate(parent), model(textModel)
{
}

void TextRowDelegate::layOut(QTextLayout& layout) const
{
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    option.setTabStopDistance(8 * QFontMetricsF(layout.font()).horizontalAdvance(QLatin1Char(' ')));
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (line.isValid())
        line.setPosition({0, 0});
    layout.endLayout();
}

void TextRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const
{
    QStyleOptionViewItem empty = option;
    initStyleOption(&empty, index);
    empty.text.clear();
    const QStyle* const style = option.widget ? option.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &empty, painter, option.widget);

    const TextRows& rows = *model.getRows();
    const int offset = rows.getOffset(index.row());
    QTextLayout layout(rows.getText(index.row()), option.font);
    QVector<QTextLayout::FormatRange> formats;
    for (const TextRows::TextSpan* const value : rows.getValues(index.row())) {
        if (!value->isUnsaved)
            continue;
        QTextLayout::FormatRange range;
        range.start = std::max(value->offset - offset, 0);
        range.length = value->offset + value->length - offset - range.start;
        // Both colours, as the row may be selected.
        range.format.setBackground(unsavedColour(option.palette));
        range.format.setForeground(option.palette.color(QPalette::Text));
        formats.append(range);
    }
    layout.setFormats(formats);
    layOut(layout);
    const bool isSelected = option.state & QStyle::State_Selected;
    painter->save();
    painter->setClipRect(option.rect);
    painter->setPen(option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
    const QPointF origin = option.rect.topLeft() + QPointF(margin, 0);
    layout.draw(painter, origin);
    if (const auto* const marked = model.getMarked(); marked && layout.lineCount() > 0) {
        const int begin = std::max(marked->offset - offset, 0);
        const int end = std::min(marked->offset + marked->length - offset, layout.text().size());
        const QTextLine line = layout.lineAt(0);
        const bool isHere = marked->offset + marked->length >= offset && begin <= layout.text().size();
        if (isHere && end >= begin) {
            const QRectF frame(origin.x() + line.cursorToX(begin) - 1, origin.y(),
                               std::max(line.cursorToX(end) - line.cursorToX(begin), qreal(1)) + 2,
                               option.rect.height() - 1);
            painter->setPen(
                option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Highlight));
            painter->drawRect(frame);
        }
    }
    painter->restore();
}

QSize TextRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QFontMetrics metrics(option.font);
    return {metrics.horizontalAdvance(index.data().toString()) + 2 * margin, metrics.height() + 2};
}

int TextRowDelegate::columnAt(int x, const QFont& font, const QModelIndex& index) const
{
    QTextLayout layout(model.getRows()->getText(index.row()), font);
    layOut(layout);
    return layout.lineCount() > 0 ? layout.lineAt(0).xToCursor(x - margin, QTextLine::CursorOnCharacter) : 0;
}

} // namespace Vantry
