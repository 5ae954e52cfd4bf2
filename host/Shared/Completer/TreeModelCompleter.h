#pragma once

#include "host/HostExport.h"

#include <QCompleter>

namespace Shared::Completer {

// Completes paths. A model is walked level by level, component by component. Only an AttributeModel holds
// whole paths, which were already chosen to match what is typed, so that all of it is offered. GUI thread.
class VANTRY_HOST_EXPORT TreeModelCompleter : public QCompleter
{
    Q_OBJECT

public:
    TreeModelCompleter(QAbstractItemModel* model, QObject* parent, const QString& separator,
                       Qt::CaseSensitivity caseSensitivity);

    // Offers what another model holds, with the popup staying where it is; setModel closes it. Null offers
    // nothing. The model is not owned.
    void replaceModel(QAbstractItemModel* model);

    QStringList splitPath(const QString& path) const override;
    QString pathFromIndex(const QModelIndex& index) const override;

private:
    bool offersWholePaths() const;

    const QString separator;
};

} // namespace Shared::Completer
