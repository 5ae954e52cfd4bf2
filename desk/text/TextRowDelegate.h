#pragma once

#include <QStyledItemDelegate>

class QTextLayout;

namespace Vantry {

class TextModel;

// Draws the rows of a text, in which unsaved values are tinted and the marked one is framed. GUI thread.
class TextRowDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    // The model outlives it.
    explicit TextRowDelegate(const TextModel& textModel, QObject* parent = nullptr);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    // Which character of a row is at a distance from its left.
    int columnAt(int x, const QFont& font, const QModelIndex& index) const;

private:
    void layOut(QTextLayout& layout) const;

    const TextModel& model;
};

} // namespace Vantry
