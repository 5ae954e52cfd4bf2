#include "desk/files/DifferenceDelegate.h"

#include <QApplication>
#include <QPainter>
#include <QTextLayout>
#include <QTreeView>

#include <algorithm>

namespace Vantry {

namespace {

constexpr int margin = 4;

// Gives the height that the text takes at the width.
qreal layOut(QTextLayout& layout, int width)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    qreal height = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition({0, height});
        height += line.height();
    }
    layout.endLayout();
    return height;
}

QTextLayout::FormatRange markOf(const DifferenceDelegate::Shown& shown, const QPalette& palette)
{
    const bool isDark = palette.color(QPalette::Base).lightness() < 128;
    QTextLayout::FormatRange mark;
    mark.start = shown.begin;
    mark.length = shown.length;
    // Both colours, as the row may be selected.
    mark.format.setBackground(isDark ? QColor(110, 85, 0) : QColor(255, 224, 130));
    mark.format.setForeground(isDark ? Qt::white : Qt::black);
    return mark;
}

} // namespace

DifferenceDelegate::DifferenceDelegate(int first, QObject* parent)
    : QStyledItemDelegate(parent), firstCompared(first)
{
}

DifferenceDelegate::Shown DifferenceDelegate::compare(const QString& text, const QString& other)
{
    constexpr int longest = 600;
    constexpr int context = 80; // before the mark
    const auto first = std::mismatch(text.begin(), text.end(), other.begin(), other.end()).first;
    const int begin = int(first - text.begin());
    const int most = std::min(text.size(), other.size()) - begin; // no letter is in both parts
    int same = 0;                                                 // at the end
    while (same < most && text[text.size() - 1 - same] == other[other.size() - 1 - same])
        ++same;
    const int end = text.size() - same;

    const int from = text.size() <= longest ? 0 : std::max(0, begin - context);
    const int to = std::min(text.size(), from + longest);
    const QString ellipsis(QChar(0x2026));
    Shown shown;
    shown.text = (from > 0 ? ellipsis : QString()) + text.mid(from, to - from) +
                 (to < text.size() ? ellipsis : QString());
    shown.text.replace(QLatin1Char('\n'), QChar(QChar::LineSeparator));
    shown.begin = begin - from + (from > 0 ? 1 : 0);
    shown.length = std::max(0, std::min(end, to) - begin);
    return shown;
}

DifferenceDelegate::Shown DifferenceDelegate::shownAt(const QModelIndex& index) const
{
    const QString text = index.data().toString();
    const int column = index.column();
    if (column != firstCompared && column != firstCompared + 1)
        return compare(text, text);
    const int other = column == firstCompared ? column + 1 : firstCompared;
    return compare(text, index.siblingAtColumn(other).data().toString());
}

void DifferenceDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const
{
    QStyleOptionViewItem empty = option;
    initStyleOption(&empty, index);
    empty.text.clear();
    const QStyle* const style = option.widget ? option.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &empty, painter, option.widget);

    const Shown shown = shownAt(index);
    QTextLayout layout(shown.text, option.font);
    layout.setFormats({markOf(shown, option.palette)});
    layOut(layout, option.rect.width() - 2 * margin);
    const bool isSelected = option.state & QStyle::State_Selected;
    painter->save();
    painter->setClipRect(option.rect);
    painter->setPen(option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
    layout.draw(painter, option.rect.topLeft() + QPointF(margin, margin));
    painter->restore();
}

QSize DifferenceDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const auto* const tree = qobject_cast<const QTreeView*>(option.widget);
    const int width = tree ? tree->columnWidth(index.column()) : option.rect.width();
    QTextLayout layout(shownAt(index).text, option.font);
    return {width, int(layOut(layout, std::max(1, width - 2 * margin))) + 2 * margin};
}

} // namespace Vantry
