#include "host/Utilities/ModelViews/TextBeginning.h"

namespace Utilities::ModelViews {

namespace {

// Text is laid out in runs of one script and direction, each of which takes far more than a letter.
class Runs
{
public:
    // Whether the character begins another one than that before it.
    bool isNext(QChar character)
    {
        const int next = runOf(character);
        const bool isOther = next != current && current != neutral;
        current = next;
        return isOther;
    }

private:
    enum : int { neutral = QChar::Script_Common, number = -1 };

    int runOf(QChar character)
    {
        const QChar::Script script = character.script();
        const QChar::Direction direction = character.direction();
        if (script > QChar::Script_Common) {
            isRightToLeft = direction == QChar::DirR || direction == QChar::DirAL;
            return script;
        }
        return isRightToLeft && direction == QChar::DirEN ? number : current;
    }

    int current = neutral;
    bool isRightToLeft = false;
};

} // namespace

QString beginningOf(const QString& text, int longest, int mostLines)
{
    constexpr int costOfRun = 15; // letters
    constexpr int costOfMark = 4; // where there are more than a language has
    constexpr int fewMarks = 3;   // on one character
    constexpr int mostMarks = 100;
    const int size = text.size();
    Runs runs;
    int cost = 0;
    int lines = 0;
    int marks = 0;
    int end = 0;
    for (; end < size; ++end) {
        const QChar character = text.at(end);
        lines += character == QLatin1Char('\n') ? 1 : 0;
        marks = character.isMark() ? marks + 1 : 0;
        cost += runs.isNext(character) ? costOfRun : marks > fewMarks ? costOfMark : 1;
        if (cost > longest || lines == mostLines || marks == mostMarks)
            break;
    }
    if (end > 0 && end < size && text.at(end).isLowSurrogate())
        --end;
    return text.left(end);
}

QString shortened(const QString& text, int longest, int mostLines)
{
    const QString beginning = beginningOf(text, longest, mostLines);
    return beginning.size() == text.size() ? text : beginning + QChar(0x2026);
}

QString joinedBeginning(const QStringList& items, int longest)
{
    QString text = items.value(0);
    for (int i = 1; i < items.size() && text.size() <= longest; ++i)
        text += QLatin1Char(',') + items.at(i);
    return text;
}

} // namespace Utilities::ModelViews
