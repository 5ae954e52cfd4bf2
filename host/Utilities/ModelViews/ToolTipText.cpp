#include "host/Utilities/ModelViews/ToolTipText.h"

#include "host/Utilities/ModelViews/TextBeginning.h"

namespace Utilities::ModelViews {

// As much as a screen shows; nobody waits until more is laid out.
constexpr int longestText = 6000;
constexpr int mostLines = 60;

QString toolTipText(const QString& text)
{
    if (text.isEmpty())
        return {};
    constexpr int longestWord = 100;
    constexpr ushort breakHere = 0x200B; // a space without width
    QString result;
    int wordLength = 0;
    for (const QChar character : shortened(text, longestText, mostLines)) {
        wordLength = character.isSpace() ? 0 : wordLength + 1;
        if (wordLength > longestWord && !character.isLowSurrogate()) {
            result.append(QChar(breakHere));
            wordLength = 1;
        }
        result.append(character);
    }
    // Only rich text is wrapped.
    return QStringLiteral("<p style=\"white-space:pre-wrap\">%1</p>").arg(result.toHtmlEscaped());
}

} // namespace Utilities::ModelViews
