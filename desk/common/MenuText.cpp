#include "desk/common/MenuText.h"

namespace Vantry {

QString menuText(const QString& text)
{
    constexpr int mostShown = 70;
    QString shown = text;
    if (shown.size() > mostShown)
        shown = shown.left(mostShown / 2) + QStringLiteral("...") + shown.right(mostShown / 2);
    for (QChar& character : shown) {
        if (character.category() == QChar::Other_Control) // what follows a tab would be shown as a shortcut
            character = QLatin1Char(' ');
    }
    return shown.replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace Vantry
