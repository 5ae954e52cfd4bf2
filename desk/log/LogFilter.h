#pragma once

#include "host/Shared/Logging/LogMessageType.h"

#include <QSet>
#include <QSortFilterProxyModel>

namespace Vantry {

// The lines of a LogModel that are of the chosen types and hold a text, upper and lower case alike. GUI
// thread.
class LogFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    void showType(Shared::Logging::LogMessageType type, bool isShown);
    void setText(const QString& text);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    QSet<int> hiddenTypes;
    QString wantedText;
};

} // namespace Vantry
