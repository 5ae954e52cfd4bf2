#include "desk/PluginDock.h"

#include <QFileInfo>
#include <QHeaderView>
#include <QStyle>
#include <QTreeWidget>

namespace Vantry {

PluginDock::PluginDock(QWidget* parent) : QDockWidget(tr("Plug-ins"), parent), rows(new QTreeWidget)
{
    setObjectName(QStringLiteral("pluginDock"));
    rows->setObjectName(QStringLiteral("pluginRows"));
    rows->setAccessibleName(windowTitle());
    rows->setRootIsDecorated(false);
    rows->setHeaderLabels({tr("Plug-in"), tr("State")});
    rows->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    setWidget(rows);
    hide();
}

void PluginDock::showFindings(const std::vector<PluginLoader::Finding>& findings)
{
    rows->clear();
    bool isRefused = false;
    for (const PluginLoader::Finding& finding : findings) {
        const bool isLoaded = finding.refusal.isEmpty();
        auto* const row = new QTreeWidgetItem(
            rows, {QFileInfo(finding.file).fileName(), isLoaded ? tr("loaded") : finding.refusal});
        row->setIcon(
            0, style()->standardIcon(isLoaded ? QStyle::SP_DialogApplyButton : QStyle::SP_MessageBoxWarning));
        row->setToolTip(0, finding.file);
        row->setToolTip(1, row->text(1));
        isRefused = isRefused || !isLoaded;
    }
    if (isRefused)
        show();
}

} // namespace Vantry
