#include "desk/changes/HunkView.h"

#include "desk/files/DiffText.h"

#include <QRegularExpression>
#include <QTextBlock>

#include <algorithm>

namespace Vantry {

HunkView::HunkView(QWidget* parent) : DiffView(parent)
{
    setObjectName(QStringLiteral("hunks"));
    connect(this, &QPlainTextEdit::selectionChanged, this, &HunkView::mark);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &HunkView::mark);
}

void HunkView::showDiff(const QString& diff)
{
    const QString shown = DiffText::shortened(diff);
    if (shown == toPlainText())
        return;
    const int block = textCursor().blockNumber();
    hunks.clear();
    setPlainText(shown);
    readHunks(diff);
    QTextCursor cursor(document()->findBlockByNumber(std::min(block, document()->blockCount() - 1)));
    setTextCursor(cursor);
    mark();
}

// What is shown of a hunk may be shortened, but has its head.
void HunkView::readHunks(const QString& diff)
{
    static const QRegularExpression head(QStringLiteral("^@@ -\\d+,\\d+ \\+(\\d+),(\\d+) @@$"),
                                         QRegularExpression::MultilineOption);
    auto heads = head.globalMatch(diff);
    for (QTextBlock block = document()->begin(); block.isValid() && heads.hasNext(); block = block.next()) {
        if (!block.text().startsWith(QLatin1String("@@ ")))
            continue;
        const QRegularExpressionMatch match = heads.next();
        const int end = heads.hasNext() ? heads.peekNext().capturedStart() : diff.size();
        if (!hunks.empty())
            hunks.back().lastBlock = block.blockNumber() - 1;
        hunks.push_back({diff.mid(match.capturedStart(), end - match.capturedStart()), block.blockNumber(),
                         document()->blockCount() - 1, match.captured(1).toInt(), match.captured(2).toInt()});
    }
}

std::vector<const HunkView::Hunk*> HunkView::chosen() const
{
    const QTextCursor cursor = textCursor();
    const int first = document()->findBlock(cursor.selectionStart()).blockNumber();
    const int last = document()->findBlock(cursor.selectionEnd()).blockNumber();
    std::vector<const Hunk*> found;
    for (const Hunk& hunk : hunks) {
        if (hunk.firstBlock <= last && hunk.lastBlock >= first)
            found.push_back(&hunk);
    }
    return found;
}

QStringList HunkView::getChosen() const
{
    QStringList texts;
    for (const Hunk* const hunk : chosen())
        texts.append(hunk->text);
    return texts;
}

void HunkView::goToLine(int line)
{
    const auto found = std::find_if(hunks.begin(), hunks.end(), [line](const Hunk& hunk) {
        return line >= hunk.firstLine && line < hunk.firstLine + std::max(hunk.lineCount, 1);
    });
    if (found == hunks.end())
        return;
    setTextCursor(QTextCursor(document()->findBlockByNumber(found->firstBlock)));
    centerCursor();
}

void HunkView::mark()
{
    QColor colour = palette().color(QPalette::Highlight);
    colour.setAlpha(40);
    QList<QTextEdit::ExtraSelection> marks;
    for (const Hunk* const hunk : chosen()) {
        for (int number = hunk->firstBlock; number <= hunk->lastBlock; ++number) {
            QTextEdit::ExtraSelection mark;
            mark.cursor = QTextCursor(document()->findBlockByNumber(number));
            mark.format.setBackground(colour);
            mark.format.setProperty(QTextFormat::FullWidthSelection, true);
            marks.append(mark);
        }
    }
    setExtraSelections(marks);
    emit choiceChanged();
}

} // namespace Vantry
