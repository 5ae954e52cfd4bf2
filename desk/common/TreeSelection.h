#pragma once

#include <QList>
#include <QString>

class QItemSelectionModel;
class QWidget;

namespace Vantry {

// Selects the attribute of that path in the tree of a page, and scrolls to it. False when no tree of the page
// shows it. GUI thread.
bool selectInTree(QWidget& page, const QString& path);

// Opens the node of that path in the trees of a page, and selects nothing. GUI thread.
void expandInTrees(QWidget& page, const QString& path);

// Has the trees of a page read what there is, which they otherwise do when a backend comes or goes. GUI
// thread.
void readTrees(QWidget& page);

// Has the trees of a page show everything, whatever its search leaves out. GUI thread.
void showAllInTrees(QWidget& page);

// The path of the node that is current in the tree which the window shows; empty without one.
QString currentInTree(const QWidget& window);

// The selections of all trees of attributes in the window.
QList<QItemSelectionModel*> selectionModels(const QWidget& window);

} // namespace Vantry
