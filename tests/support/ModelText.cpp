#include "tests/support/ModelText.h"

namespace TestSupport {

namespace {

void addLines(const QAbstractItemModel& model, const QModelIndex& parent, int depth, int level,
              QStringList& lines)
{
    if (level == depth)
        return;
    const int count = model.rowCount(parent);
    for (int row = 0; row < count; ++row) {
        const QModelIndex name = model.index(row, 0, parent);
        const QString value = name.siblingAtColumn(1).data().toString();
        const QString line = QString(2 * level, QLatin1Char(' ')) + name.data().toString();
        lines.append(value.isEmpty() ? line : line + QStringLiteral(" = ") + value);
        addLines(model, name, depth, level + 1, lines);
    }
}

} // namespace

QStringList modelText(const QAbstractItemModel& model, const QModelIndex& parent, int depth)
{
    QStringList lines;
    addLines(model, parent, depth, 0, lines);
    return lines;
}

QString firstDifference(const QStringList& actual, const QStringList& expected)
{
    for (int i = 0; i < qMax(actual.size(), expected.size()); ++i) {
        if (actual.value(i) != expected.value(i) || (i < actual.size()) != (i < expected.size()))
            return QStringLiteral("line %1: \"%2\" instead of \"%3\"")
                .arg(i + 1)
                .arg(actual.value(i), expected.value(i));
    }
    return {};
}

} // namespace TestSupport
