#include "desk/files/DiffText.h"

#include <QCoreApplication>

#include <algorithm>

namespace Vantry {

namespace {

// How much two lines have in common, their signs aside.
int commonLength(const QStringRef& before, const QStringRef& after)
{
    const auto differs = std::mismatch(before.begin() + 1, before.end(), after.begin() + 1, after.end());
    return int(differs.first - before.begin());
}

QString cut(const QStringRef& line, int around)
{
    constexpr int context = 60;
    if (line.size() <= DiffText::longestLine)
        return line.toString();
    const int begin = std::max(1, around - context);
    const QString ellipsis = QStringLiteral("...");
    QString shown =
        line.left(1) + (begin > 1 ? ellipsis : QString()) + line.mid(begin, DiffText::longestLine);
    if (begin + DiffText::longestLine < line.size())
        shown += ellipsis;
    return shown;
}

} // namespace

QString DiffText::shortened(const QString& diff)
{
    const QVector<QStringRef> lines = diff.splitRef(QLatin1Char('\n'), Qt::SkipEmptyParts);
    const auto isPair = [&lines](int first) {
        return first >= 0 && first + 1 < lines.size() && lines[first].startsWith(QLatin1Char('-')) &&
               lines[first + 1].startsWith(QLatin1Char('+'));
    };
    QString shown;
    const int count = std::min(mostLines, int(lines.size()));
    for (int i = 0; i < count; ++i) {
        int around = 0;
        if (isPair(i))
            around = commonLength(lines[i], lines[i + 1]);
        else if (isPair(i - 1))
            around = commonLength(lines[i - 1], lines[i]);
        shown += cut(lines[i], around) + QLatin1Char('\n');
    }
    if (lines.size() > count)
        shown += QCoreApplication::translate("Vantry::DiffText", "... and %1 more lines")
                     .arg(lines.size() - count) +
                 QLatin1Char('\n');
    return shown;
}

} // namespace Vantry
