#pragma once

#include "host/FrameworkCore/AppConfig/FilePosition.h"
#include "host/FrameworkCore/AppConfig/Outcome.h"

#include <QDockWidget>
#include <QHash>

class QTreeWidget;
class QTreeWidgetItem;

namespace Vantry {

// The files of folders that could not be opened: a row for each, with the place and the reason. It goes once
// the file can be opened, or is gone. GUI thread.
class ProblemsDock : public QDockWidget
{
    Q_OBJECT

public:
    using Outcome = FrameworkCore::AppConfig::Outcome;

    explicit ProblemsDock(QWidget* parent = nullptr);

    // What came of opening a file.
    void take(const Outcome& outcome);

signals:
    // The person wants to see the place.
    void openRequested(const FrameworkCore::AppConfig::FilePosition& place);

private:
    void openFile(const QTreeWidgetItem& row);

    QTreeWidget* rows; // child
    QHash<QString, QTreeWidgetItem*> rowsByFile;
};

} // namespace Vantry
