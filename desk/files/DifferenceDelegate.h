#pragma once

#include <QStyledItemDelegate>

namespace Vantry {

// Draws the texts of a tree's columns wrapped to their widths; in two neighbouring ones, what differs between
// them is marked. Of a very long text, it shows what is around the difference. GUI thread.
class DifferenceDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    // Compared are this column and the next one.
    explicit DifferenceDelegate(int firstCompared, QObject* parent = nullptr);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    // What is shown of a text, and which part of that is marked.
    struct Shown
    {
        QString text;
        int begin = 0; // of the mark
        int length = 0;
    };
    static Shown compare(const QString& text, const QString& other);

private:
    Shown shownAt(const QModelIndex& index) const;

    const int firstCompared;
};

} // namespace Vantry
