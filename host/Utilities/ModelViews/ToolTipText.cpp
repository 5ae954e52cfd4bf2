#include "host/Utilities/ModelViews/ToolTipText.h"

namespace Utilities::ModelViews {

QString toolTipText(const QString& text)
{
    constexpr int longestWord = 100;
    constexpr ushort breakHere = 0x200B; // a space without width
    QString result;
    int wordLength = 0;
    for (const QChar character : text) {
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
