#include "host/Utilities/ModelViews/monitor/WatchedRowsMimeData.h"

#include <QList>

namespace Utilities::ModelViews {

namespace {

// The table's identity, then the rows, with blanks between.
QList<QByteArray> wordsOf(const QMimeData& data)
{
    return data.data(watchedRowsMimeType()).split(' ');
}

} // namespace

QString watchedRowsMimeType()
{
    return QStringLiteral("application/x-vantry-watched-rows");
}

void addWatchedRows(QMimeData& data, const QByteArray& identity, const std::vector<int>& rows)
{
    QByteArray words = identity;
    for (const int row : rows)
        words += ' ' + QByteArray::number(row);
    data.setData(watchedRowsMimeType(), words);
}

bool areWatchedRowsOf(const QMimeData& data, const QByteArray& identity)
{
    return wordsOf(data).first() == identity;
}

std::vector<int> watchedRowsFrom(const QMimeData& data)
{
    std::vector<int> rows;
    const QList<QByteArray> words = wordsOf(data).mid(1);
    for (const QByteArray& word : words)
        rows.push_back(word.toInt());
    return rows;
}

} // namespace Utilities::ModelViews
