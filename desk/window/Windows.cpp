#include "desk/window/Windows.h"

#include "desk/session/SessionKeeper.h"
#include "desk/window/MainWindow.h"
#include "desk/window/WindowMemory.h"

#include <QStyle>

#include <algorithm>

namespace Vantry {

Windows::Windows(std::shared_ptr<Repository> attributes, PluginLoader& pluginLoader)
    : repository(std::move(attributes)), loader(pluginLoader), mounter(repository)
{
}

Windows::~Windows()
{
    session.reset();
    while (!windows.empty())
        windows.pop_back();
}

MainWindow& Windows::open(const QStringList& files)
{
    int number = 1;
    const auto isTaken = [&number](const auto& window) { return window->getNumber() == number; };
    while (std::any_of(windows.begin(), windows.end(), isTaken))
        ++number;
    windows.push_back(std::make_unique<MainWindow>(*this, number, files));
    MainWindow& window = *windows.back();
    current = &window;
    connect(&window, &MainWindow::viewChanged, this, [this] {
        if (session)
            session->noteChange();
    });
    emit changed();
    return window;
}

void Windows::openBeside(MainWindow& window)
{
    WindowMemory::save(window);
    MainWindow& opened = open({});
    const SessionState::View view = window.getView();
    opened.showFrame(view);
    if (!repository->getBackendInterface()->getBackendNames().isEmpty())
        opened.showPages(view.pages);
    const int step = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    if (!opened.isMaximized())
        opened.move(window.pos() + QPoint(step, step));
    opened.show();
    if (session)
        session->noteChange();
}

QList<MainWindow*> Windows::getWindows() const
{
    QList<MainWindow*> list;
    for (const auto& window : windows)
        list.append(window.get());
    return list;
}

void Windows::beginSession(bool restores)
{
    session = std::make_unique<SessionKeeper>(repository, mounter, [this] {
        QVector<SessionState::View> views;
        for (const auto& window : windows)
            views.append(window->getView());
        return views;
    });
    MainWindow& first = *windows.front();
    const auto prepare = [this, &first](const QVector<SessionState::View>& views) {
        for (int number = 0; number < views.size(); ++number) {
            MainWindow& window = number == 0 ? first : open({});
            window.showFrame(views[number]);
            window.showPages(views[number].pages); // whose attributes come before the files
            connect(session.get(), &SessionKeeper::restored, &window,
                    [&window, view = views[number]] { window.showView(view); });
            if (number > 0)
                window.show();
        }
    };
    const bool isRestored = restores && first.reopensFiles() && session->restore(prepare);
    current = &first;
    const auto unsaved = session->takeUnsaved();
    if (isRestored)
        first.applyKeptOnceOpen(unsaved);
    session->follow();
}

void Windows::endSession()
{
    if (session)
        session->end();
}

void Windows::quit(MainWindow& asking)
{
    if (windows.size() == 1) {
        asking.close();
        return;
    }
    const auto all = getWindows();
    const bool mayClose =
        std::all_of(all.begin(), all.end(), [](MainWindow* window) { return window->mayEntryBeLost(); });
    if (mayClose && asking.getFiles().mayBeLost())
        closeAll(asking);
}

void Windows::closeUnasked()
{
    MainWindow& last = current ? *current : *windows.front();
    last.getFiles().keepUnsaved();
    closeAll(last);
}

// How the last one looks is what the next start begins with.
void Windows::closeAll(MainWindow& last)
{
    endSession();
    const auto all = getWindows();
    for (MainWindow* const window : all) {
        if (window != &last)
            window->closeUnasked();
    }
    last.closeUnasked();
}

void Windows::remove(MainWindow& window)
{
    const auto found = std::find_if(windows.begin(), windows.end(),
                                    [&window](const auto& each) { return each.get() == &window; });
    if (windows.size() == 1 || found == windows.end())
        return;
    found->release()->deleteLater(); // it is being closed
    windows.erase(found);
    if (current == &window)
        current = windows.back().get();
    if (session)
        session->noteChange();
    emit changed();
}

} // namespace Vantry
