#include "host/Utilities/ModelViews/monitor/WatchedRowsDrag.h"

#include "host/FrameworkCore/AppConfig/AttributePath.h"
#include "host/Utilities/ModelViews/AttributePathsMimeData.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace Utilities::ModelViews {

namespace {

QString rowsMimeType()
{
    return QStringLiteral("application/x-vantry-watched-rows");
}

// The table's identity, then the rows, with blanks between.
QList<QByteArray> wordsOf(const QMimeData& data)
{
    return data.data(rowsMimeType()).split(' ');
}

} // namespace

QStringList WatchedRowsDrag::mimeTypes()
{
    return QStringList(rowsMimeType()) + attributePathsMimeTypes();
}

std::unique_ptr<QMimeData> WatchedRowsDrag::dataOf(const WatchedRows& rows,
                                                   const std::vector<int>& ascending) const
{
    QStringList paths;
    QByteArray words = identity;
    for (const int row : ascending) {
        paths.append(rows.at(row).path);
        words += ' ' + QByteArray::number(row);
    }
    auto data = makeAttributePathsMimeData(paths);
    data->setData(rowsMimeType(), words);
    return data;
}

bool WatchedRowsDrag::isOwn(const QMimeData& data) const
{
    return wordsOf(data).first() == identity;
}

std::vector<int> WatchedRowsDrag::rowsIn(const QMimeData& data, int rowCount)
{
    std::vector<int> rows;
    const QList<QByteArray> words = wordsOf(data).mid(1);
    for (const QByteArray& word : words) {
        const int row = word.toInt();
        if (row >= 0 && row < rowCount)
            rows.push_back(row);
    }
    return rows;
}

QStringList WatchedRowsDrag::addedBy(const QStringList& paths, const WatchedRows& rows,
                                     const FrameworkCore::AppConfig::Interfaces::TreeInterface* tree)
{
    const QStringList present = rows.paths();
    QSet<QString> watched(present.begin(), present.end());
    QStringList added;
    const auto add = [&](const QString& path) {
        const int before = watched.size();
        watched.insert(path);
        if (watched.size() > before)
            added.append(path);
    };
    for (const QString& path : paths) {
        if (!tree || !tree->getNodeInformation(path).exists) {
            add(path);
            continue;
        }
        std::vector<QString> toVisit{path}; // the next one is the last
        while (!toVisit.empty()) {
            const QString node = std::move(toVisit.back());
            toVisit.pop_back();
            const auto information = tree->getNodeInformation(node);
            if (information.isAttribute)
                add(node);
            if (information.childCount == 0)
                continue;
            const QStringList names = tree->getChildNames(node);
            std::for_each(names.crbegin(), names.crend(), [&](const QString& name) {
                toVisit.push_back(FrameworkCore::AppConfig::joinedPath(node, name));
            });
        }
    }
    return added;
}

} // namespace Utilities::ModelViews
