#include "host/Utilities/ModelViews/Widgets/BreakableText.h"

#include <QStringList>

namespace Utilities::ModelViews::Widgets {

namespace {

constexpr int longestUnbroken = 48; // characters; narrower than any message box becomes
constexpr int longestWord = 1200;   // some 20 lines
constexpr int longestText = 4000;   // less than a screen
constexpr int mostLines = 30;
constexpr QChar breakPlace(0x200B); // a space without width

QString elided(const QString& text, int longest)
{
    if (text.size() <= longest)
        return text;
    return text.left(longest / 2) + QChar(0x2026) + text.right(longest / 2);
}

QString withFewLines(const QString& text)
{
    if (text.count(QLatin1Char('\n')) < mostLines)
        return text;
    const QStringList lines = text.split(QLatin1Char('\n'));
    const QStringList shown = lines.mid(0, mostLines / 2) + QStringList(QString(QChar(0x2026))) +
                              lines.mid(lines.size() - mostLines / 2);
    return shown.join(QLatin1Char('\n'));
}

// Breaks after a separator where there is one, as people would.
QString broken(const QString& word)
{
    QString text;
    int sinceBreak = 0;
    for (const QChar character : word) {
        text += character;
        ++sinceBreak;
        const bool isSeparator = character == QLatin1Char('.') || character == QLatin1Char('/');
        const bool isPair = character.isHighSurrogate();
        if (!isPair && (sinceBreak >= longestUnbroken || (isSeparator && sinceBreak > longestUnbroken / 4))) {
            text += breakPlace;
            sinceBreak = 0;
        }
    }
    return text;
}

} // namespace

QString breakableText(const QString& text)
{
    QString result;
    QString word;
    const auto endWord = [&] {
        result += word.size() > longestUnbroken ? broken(elided(word, longestWord)) : word;
        word.clear();
    };
    const QString shown = elided(withFewLines(text), longestText);
    for (const QChar character : shown) {
        if (!character.isSpace()) {
            word += character;
            continue;
        }
        endWord();
        result += character;
    }
    endWord();
    return result;
}

} // namespace Utilities::ModelViews::Widgets
