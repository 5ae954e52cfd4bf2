#include "desk/window/WindowMenu.h"

#include "desk/common/MenuText.h"
#include "desk/window/MainWindow.h"
#include "desk/window/Windows.h"

namespace Vantry {

WindowMenu::WindowMenu(Windows& allWindows, MainWindow& ownWindow)
    : QMenu(tr("&Window"), &ownWindow), windows(allWindows), window(ownWindow)
{
    QAction* const open = addAction(
        tr("&New Window"), this, [this] { windows.openBeside(window); }, Qt::CTRL + Qt::SHIFT + Qt::Key_N);
    open->setObjectName(QStringLiteral("newWindow"));
    QAction* const close = addAction(tr("&Close Window"), &window, &QWidget::close, Qt::CTRL + Qt::Key_W);
    close->setObjectName(QStringLiteral("closeWindow"));
    addSeparator();
    connect(this, &QMenu::aboutToShow, this, &WindowMenu::showWindows);
    connect(&windows, &Windows::changed, this, &WindowMenu::showWindows);
}

void WindowMenu::showWindows()
{
    qDeleteAll(entries);
    entries.clear();
    const auto all = windows.getWindows();
    for (MainWindow* const other : all) {
        QAction* const entry = addAction(menuText(other->getTitle()), other, [other] {
            other->setWindowState(other->windowState() & ~Qt::WindowMinimized);
            other->raise();
            other->activateWindow();
        });
        entry->setCheckable(true);
        entry->setChecked(other == &window);
        entries.append(entry);
    }
}

} // namespace Vantry
