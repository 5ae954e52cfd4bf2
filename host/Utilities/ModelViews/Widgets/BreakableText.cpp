#include "host/Utilities/ModelViews/Widgets/BreakableText.h"

namespace Utilities::ModelViews::Widgets {

namespace {

constexpr int longestUnbroken = 48; // characters; narrower than any message box becomes
constexpr int longestWord = 1200;   // some 20 lines
constexpr QChar breakPlace(0x200B); // a space without width

QString elided(const QString& word)
{
    if (word.size() <= longestWord)
        return word;
    return word.left(longestWord / 2) + QChar(0x2026) + word.right(longestWord / 2);
}

// Breaks behind a separator where there is one, as people would.
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
        result += word.size() > longestUnbroken ? broken(elided(word)) : word;
        word.clear();
    };
    for (const QChar character : text) {
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
