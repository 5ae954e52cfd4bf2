#include "desk/places/CommentNote.h"

#include "host/Utilities/ModelViews/ToolTipText.h"

#include <QBoxLayout>

namespace Vantry {

CommentNote::CommentNote()
{
    setObjectName(QStringLiteral("comment"));
    setAccessibleName(tr("Comment of the file"));
    setWordWrap(true);
    setMargin(3);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Maximum);
    QFont slanted = font();
    slanted.setItalic(true);
    setFont(slanted);
    hide();
}

CommentNote* CommentNote::below(const QWidget& window, const QString& name)
{
    auto* const above = window.findChild<QWidget*>(name);
    auto* const column = above ? qobject_cast<QBoxLayout*>(above->parentWidget()->layout()) : nullptr;
    if (!column)
        return nullptr;
    auto* const note = new CommentNote;
    column->insertWidget(column->indexOf(above) + 1, note);
    return note;
}

void CommentNote::showComment(const QString& comment)
{
    constexpr int mostLines = 4;
    const QStringList lines = comment.split(QLatin1Char('\n'));
    const bool isLong = lines.size() > mostLines;
    setText(isLong ? lines.mid(0, mostLines).join(QLatin1Char('\n')) + QChar(0x2026) : comment);
    setToolTip(Utilities::ModelViews::toolTipText(isLong ? comment : QString()));
    setVisible(!comment.isEmpty());
}

} // namespace Vantry
