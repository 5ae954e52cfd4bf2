#include "desk/files/DiffView.h"

#include <QEvent>
#include <QFontDatabase>
#include <QSyntaxHighlighter>

namespace Vantry {

namespace {

// Colours each line by its sign; what precedes a file's first "@@" is its heading.
class DiffColours : public QSyntaxHighlighter
{
public:
    explicit DiffColours(const QPlainTextEdit& shownView)
        : QSyntaxHighlighter(shownView.document()), view(shownView)
    {
    }

protected:
    void highlightBlock(const QString& text) override
    {
        enum { Heading, Hunk };
        int state = previousBlockState() == Hunk ? Hunk : Heading;
        if (text.isEmpty())
            state = Heading;
        else if (text.startsWith(QLatin1String("@@")))
            state = Hunk;
        setCurrentBlockState(state);

        const bool isDark = view.palette().color(QPalette::Base).lightness() < 128;
        QTextCharFormat format;
        if (state == Heading)
            format.setFontWeight(QFont::Bold);
        else if (text.startsWith(QLatin1Char('@')))
            format.setForeground(isDark ? QColor(120, 190, 255) : QColor(0, 90, 160));
        else if (text.startsWith(QLatin1Char('+')))
            format.setForeground(isDark ? QColor(120, 220, 130) : QColor(0, 110, 30));
        else if (text.startsWith(QLatin1Char('-')))
            format.setForeground(isDark ? QColor(255, 140, 130) : QColor(176, 0, 16));
        setFormat(0, text.size(), format);
    }

private:
    const QPlainTextEdit& view;
};

} // namespace

DiffView::DiffView(QWidget* parent) : QPlainTextEdit(parent)
{
    setObjectName(QStringLiteral("differences"));
    setAccessibleName(tr("What would be written"));
    setReadOnly(true);
    setTabChangesFocus(true);
    setLineWrapMode(NoWrap);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    colours = new DiffColours(*this); // a child of the document
}

void DiffView::changeEvent(QEvent* event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && colours)
        colours->rehighlight();
}

} // namespace Vantry
