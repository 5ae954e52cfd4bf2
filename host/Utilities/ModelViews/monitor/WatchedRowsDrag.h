#pragma once

#include "host/FrameworkCore/AppConfig/TreeInterface.h"
#include "host/Utilities/ModelViews/monitor/WatchedRows.h"

#include <QMimeData>
#include <QUuid>

namespace Utilities::ModelViews {

// What a drag out of one table of watched attributes carries: their paths for others, its rows for itself.
class WatchedRowsDrag
{
public:
    static QStringList mimeTypes();
    std::unique_ptr<QMimeData> dataOf(const WatchedRows& rows, const std::vector<int>& ascending) const;

    bool isOwn(const QMimeData& data) const;
    static std::vector<int> rowsIn(const QMimeData& data, int rowCount); // that there are

    // The attributes that a drop of paths adds to the rows: each once, and in place of what has children the
    // attributes there and below, in the order of the tree. A path that the tree does not know stays as it
    // is. Without a tree all paths do.
    static QStringList addedBy(const QStringList& paths, const WatchedRows& rows,
                               const FrameworkCore::AppConfig::Interfaces::TreeInterface* tree);

private:
    const QByteArray identity = QUuid::createUuid().toByteArray();
};

} // namespace Utilities::ModelViews
