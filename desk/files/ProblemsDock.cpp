#include "desk/files/ProblemsDock.h"

#include "desk/common/RowCopy.h"
#include "host/Utilities/ModelViews/ToolTipText.h"

#include <QHeaderView>
#include <QTreeWidget>

namespace Vantry {

enum Role { FileRole = Qt::UserRole, LineRole, ColumnRole };

ProblemsDock::ProblemsDock(QWidget* parent) : QDockWidget(tr("Problems"), parent), rows(new QTreeWidget)
{
    setObjectName(QStringLiteral("problemsDock"));
    rows->setObjectName(QStringLiteral("problemRows"));
    rows->setAccessibleName(windowTitle());
    rows->setRootIsDecorated(false);
    rows->setUniformRowHeights(true);
    rows->setTextElideMode(Qt::ElideMiddle);
    rows->setContextMenuPolicy(Qt::ActionsContextMenu);
    addRowCopy(*rows);
    rows->setHeaderLabels({tr("Place"), tr("Reason")});
    rows->header()->resizeSection(0, 420);
    connect(rows, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* row) { openFile(*row); });
    setWidget(rows);
    hide();
}

void ProblemsDock::take(const Outcome& outcome)
{
    const QString& file = outcome.get().file;
    if (outcome.ok()) {
        delete rowsByFile.take(file);
    } else {
        QTreeWidgetItem*& row = rowsByFile[file];
        if (!row)
            row = new QTreeWidgetItem(rows);
        row->setData(0, FileRole, file);
        row->setData(0, LineRole, qMax(1, outcome.get().line));
        row->setData(0, ColumnRole, qMax(1, outcome.get().column));
        row->setText(0, outcome.place(file));
        row->setText(1, outcome.explain());
        for (int column = 0; column < rows->columnCount(); ++column)
            row->setToolTip(column, Utilities::ModelViews::toolTipText(row->text(column)));
    }
    setWindowTitle(rowsByFile.isEmpty() ? tr("Problems") : tr("Problems (%1)").arg(rowsByFile.size()));
}

void ProblemsDock::openFile(const QTreeWidgetItem& row)
{
    emit openRequested(
        {row.data(0, FileRole).toString(), row.data(0, LineRole).toInt(), row.data(0, ColumnRole).toInt()});
}

} // namespace Vantry
