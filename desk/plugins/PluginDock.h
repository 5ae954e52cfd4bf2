#pragma once

#include "desk/plugins/PluginLoader.h"

#include <QDockWidget>

class QPushButton;
class QTreeWidget;

namespace Vantry {

// The list of plug-ins that were found: a row for each, with the reason where one was refused, and a button
// that lets in again what is left out. GUI thread.
class PluginDock : public QDockWidget
{
    Q_OBJECT

public:
    explicit PluginDock(QWidget* parent = nullptr);

    // Shows itself when there is a refusal among them.
    void showFindings(const std::vector<PluginLoader::Finding>& findings);

    void setVisible(bool isVisible) override;

private:
    void setUp();
    void fillRows();
    void refreshButton();
    void letIn();

    std::vector<PluginLoader::Finding> findings;

    // Children, from the first showing on.
    QTreeWidget* rows = nullptr;
    QPushButton* letInButton = nullptr;
};

} // namespace Vantry
