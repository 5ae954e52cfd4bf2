#include "host/Utilities/ModelViews/TextBeginning.h"

namespace Utilities::ModelViews {

QString beginningOf(const QString& text, int longest, int mostLines)
{
    constexpr int mostMarks = 100; // on one character
    int end = qMin(text.size(), longest);
    if (end < text.size() && text.at(end).isLowSurrogate())
        --end;
    int lines = 0;
    int marks = 0;
    for (int i = 0; i < end; ++i) {
        lines += text.at(i) == QLatin1Char('\n') ? 1 : 0;
        marks = text.at(i).isMark() ? marks + 1 : 0;
        if (lines == mostLines || marks == mostMarks)
            end = i;
    }
    return text.left(end);
}

} // namespace Utilities::ModelViews
