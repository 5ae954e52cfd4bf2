#pragma once

#include <QDialog>
#include <QVector>

class QAction;
class QLineEdit;
class QMenu;
class QMenuBar;
class QTreeWidget;

namespace Vantry {

// Lists all that the menus of a window offer, with their keys, narrows it by what is typed, and does what is
// chosen. GUI thread.
class ActionList : public QDialog
{
    Q_OBJECT

public:
    enum class Shown { Everything, Keys };

    ActionList(const QMenuBar& menus, Shown shown, QWidget* parent);

    QAction* getChosen() const; // null without one that is possible

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addActions(const QString& place, const QList<QAction*>& actions, Shown shown);
    void addOtherKeys();
    void narrow(const QString& typed);

    // Children.
    QLineEdit* field;
    QTreeWidget* rows;
    QVector<QAction*> actions; // of the rows, not owned; null for a key of no menu
};

} // namespace Vantry
