#include "desk/PluginDock.h"

#include "host/Utilities/ModelViews/ToolTipText.h"

#include <QFileInfo>
#include <QHeaderView>
#include <QStyle>
#include <QTreeWidget>

#include <algorithm>

namespace Vantry {

PluginDock::PluginDock(QWidget* parent) : QDockWidget(tr("Plug-ins"), parent)
{
    setObjectName(QStringLiteral("pluginDock"));
    hide();
}

void PluginDock::showFindings(const std::vector<PluginLoader::Finding>& foundPlugins)
{
    findings = foundPlugins;
    if (rows)
        fillRows();
    const bool isRefused = std::any_of(findings.begin(), findings.end(),
                                       [](const auto& finding) { return !finding.refusal.isEmpty(); });
    if (isRefused)
        show();
}

void PluginDock::setVisible(bool isVisible)
{
    if (isVisible && !rows)
        setUp();
    QDockWidget::setVisible(isVisible);
}

void PluginDock::setUp()
{
    rows = new QTreeWidget;
    rows->setObjectName(QStringLiteral("pluginRows"));
    rows->setAccessibleName(windowTitle());
    rows->setRootIsDecorated(false);
    rows->setHeaderLabels({tr("Plug-in"), tr("State")});
    rows->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    fillRows();
    setWidget(rows);
}

void PluginDock::fillRows()
{
    rows->clear();
    for (const PluginLoader::Finding& finding : findings) {
        const bool isLoaded = finding.refusal.isEmpty();
        auto* const row = new QTreeWidgetItem(
            rows, {QFileInfo(finding.file).fileName(), isLoaded ? tr("loaded") : finding.refusal});
        row->setIcon(
            0, style()->standardIcon(isLoaded ? QStyle::SP_DialogApplyButton : QStyle::SP_MessageBoxWarning));
        row->setToolTip(0, Utilities::ModelViews::toolTipText(finding.file));
        row->setToolTip(1, Utilities::ModelViews::toolTipText(row->text(1)));
    }
}

} // namespace Vantry
