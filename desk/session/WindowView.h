#pragma once

#include "desk/session/SessionState.h"

#include <QObject>
#include <QPointer>
#include <QSet>

class QMainWindow;
class QTreeView;

namespace Utilities::ModelViews {
class AdvancedAttributeModel;
}

namespace Vantry {

// How a window shows what is open: its size, its docks, what is expanded, selected and scrolled to in its
// tree, and what its monitor follows. GUI thread.
class WindowView : public QObject
{
    Q_OBJECT

public:
    // Of what a window says about its docks; rises when these are put elsewhere at first.
    static constexpr int layoutVersion = 1;

    // Of a window that has its pages by now, and outlives this.
    explicit WindowView(QMainWindow& window);

    // Without the pages, which are the window's own.
    SessionState::View get() const;

    // What is open by now is shown as it was. The size and the docks are taken over at once.
    void show(const SessionState::View& view);
    void showFrame(const SessionState::View& view);

signals:
    void changed();

private:
    void follow();

    QMainWindow& window;
    QPointer<QTreeView> tree; // of the page of attributes
    QPointer<Utilities::ModelViews::AdvancedAttributeModel> monitor;
    QSet<QString> expanded;
};

} // namespace Vantry
