#pragma once

#include "desk/PluginLoader.h"

#include <QDockWidget>

class QTreeWidget;

namespace Vantry {

// The list of plug-ins that were found: a row for each, with the reason where one was refused. GUI thread.
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

    std::vector<PluginLoader::Finding> findings;
    QTreeWidget* rows = nullptr; // a child, from the first showing on
};

} // namespace Vantry
