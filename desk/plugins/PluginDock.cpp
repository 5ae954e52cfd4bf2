#include "desk/plugins/PluginDock.h"

#include "desk/common/RowCopy.h"
#include "desk/plugins/PluginMemory.h"
#include "host/Utilities/ModelViews/ToolTipText.h"

#include <QFileInfo>
#include <QHeaderView>
#include <QPushButton>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace Vantry {

constexpr int fileRole = Qt::UserRole;

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
    if (isRefused) {
        show();
        raise();
    }
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
    rows->setContextMenuPolicy(Qt::ActionsContextMenu);
    addRowCopy(*rows);
    rows->setHeaderLabels({tr("Plug-in"), tr("State")});
    rows->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    letInButton = new QPushButton(tr("&Load at Next Start"));
    letInButton->setObjectName(QStringLiteral("letInButton"));
    letInButton->setToolTip(tr("Tries this plug-in again, although Vantry has ended in it"));
    connect(rows, &QTreeWidget::currentItemChanged, this, &PluginDock::refreshButton);
    connect(letInButton, &QPushButton::clicked, this, &PluginDock::letIn);
    fillRows();

    auto* const content = new QWidget;
    auto* const column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(rows);
    column->addWidget(letInButton, 0, Qt::AlignLeft);
    content->setFocusProxy(rows);
    setWidget(content);
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
        row->setData(0, fileRole, finding.file);
    }
    refreshButton();
}

void PluginDock::refreshButton()
{
    using Verdict = PluginMemory::Verdict;
    const QTreeWidgetItem* const row = rows->currentItem();
    const Verdict verdict = row ? PluginMemory::getVerdict(row->data(0, fileRole).toString()) : Verdict::None;
    letInButton->setEnabled(verdict == Verdict::LeftOut || verdict == Verdict::Endless);
}

void PluginDock::letIn()
{
    QTreeWidgetItem& row = *rows->currentItem();
    PluginMemory::setVerdict(row.data(0, fileRole).toString(), PluginMemory::Verdict::None);
    row.setText(1, tr("is tried again at the next start"));
    refreshButton();
}

} // namespace Vantry
