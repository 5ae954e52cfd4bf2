#include "widgets/CellEditor.h"

#include "host/Utilities/ModelViews/TextBeginning.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QEvent>
#include <QLineEdit>
#include <QLocale>
#include <QPainter>
#include <QScrollBar>
#include <QVariant>

namespace Widgets {

namespace {

// A line around an editor, drawn over it: the frame of a style would leave a row too little room for its
// text.
class CellFrame : public QWidget
{
public:
    explicit CellFrame(QWidget& framed) : QWidget(&framed)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setStyleSheet(QString::fromLatin1("background-color: transparent;")); // whatever its view has
        framed.installEventFilter(this);
        resize(framed.size());
        show();
    }

    bool eventFilter(QObject* framed, QEvent* event) override
    {
        if (event->type() == QEvent::Resize)
            resize(static_cast<QWidget*>(framed)->size());
        return false;
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
};

// Moves the view so far that what lies between the two places of its window is seen, first of all its
// beginning.
void scrollTo(QAbstractItemView& view, int left, int right)
{
    QScrollBar* const bar = view.horizontalScrollBar();
    bar->setValue(bar->value() + qMin(left, qMax(right - view.viewport()->width(), 0)));
}

// A long text makes its cell wider than the view.
void scrollToCursor(QAbstractItemView& view, const QLineEdit& line)
{
    const QRect cursor = line.inputMethodQuery(Qt::ImCursorRectangle).toRect();
    const int left = line.mapTo(view.viewport(), cursor.topLeft()).x();
    scrollTo(view, left, left + cursor.width());
}

} // namespace

EditorKind editorKindOf(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::Bool:
        return EditorKind::CheckBox;
    case QMetaType::QStringList:
        return EditorKind::List;
    case QMetaType::QDate:
    case QMetaType::QTime:
    case QMetaType::QDateTime:
        return EditorKind::DateTime;
    case QMetaType::QByteArray:
        return EditorKind::None;
    default:
        return EditorKind::Line;
    }
}

void placeOverCell(QAbstractItemView& view, const QModelIndex& cell, QWidget& editor)
{
    const QRect place = view.visualRect(cell);
    const bool scrollsByPixels = view.horizontalScrollMode() == QAbstractItemView::ScrollPerPixel;
    const int scrolled = view.horizontalScrollBar()->value();
    // Or the row, in some views all rows, would grow to what an editor in a form takes.
    editor.setMaximumHeight(place.height());
    editor.show();
    view.setIndexWidget(cell, &editor);
    new CellFrame(editor);
    // Moving it into the view has taken the focus away. This reason makes an editor select what it holds.
    editor.setFocus(Qt::TabFocusReason);
    if (!scrollsByPixels)
        return;
    // The view has scrolled to a cell that has got the focus, as a whole; the names before it should stay.
    view.horizontalScrollBar()->setValue(scrolled);
    scrollTo(view, place.left(), place.left() + qMin(place.width(), editor.sizeHint().width()));
    if (const auto* const line = qobject_cast<QLineEdit*>(&editor))
        QObject::connect(line, &QLineEdit::cursorPositionChanged, &view,
                         [&view, line] { scrollToCursor(view, *line); });
}

bool isLineEditable(const QString& text, QString& reason)
{
    constexpr int longest = 50000; // characters
    if (Utilities::ModelViews::beginningOf(text, longest, longest).size() == text.size())
        return true;
    reason = QCoreApplication::translate("Widgets::CellEditor",
                                         "A value of %1 characters is too long to be edited in a line")
                 .arg(QLocale().toString(text.size()));
    return false;
}

bool isTakenAway(const QWidget& editor)
{
    return editor.isHidden() && editor.testAttribute(Qt::WA_WState_ExplicitShowHide);
}

} // namespace Widgets
