#include "desk/window/WindowMemory.h"

#include "desk/session/WindowView.h"

#include <QAction>
#include <QMainWindow>
#include <QRegularExpression>
#include <QSettings>
#include <QSplitter>

namespace Vantry {

namespace {

const QLatin1String geometryKey("window/geometry");
const QLatin1String stateKey("window/state");

// The names of the splitter and of the widgets that hold it, so that two pages may call theirs the same.
QString splitterKey(const QSplitter& splitter)
{
    QStringList names;
    for (const QWidget* widget = &splitter; widget && !widget->isWindow(); widget = widget->parentWidget()) {
        if (!widget->objectName().isEmpty())
            names.prepend(widget->objectName());
    }
    return QStringLiteral("splitters/") + names.join(QLatin1Char('.'));
}

QList<QSplitter*> namedSplitters(const QWidget& window)
{
    return window.findChildren<QSplitter*>(QRegularExpression(QStringLiteral(".")));
}

// Only the window's own: what a page remembers of its actions is its own affair.
QList<QAction*> checkableActions(const QWidget& window)
{
    QList<QAction*> actions =
        window.findChildren<QAction*>(QRegularExpression(QStringLiteral(".")), Qt::FindDirectChildrenOnly);
    actions.erase(std::remove_if(actions.begin(), actions.end(),
                                 [](const QAction* action) { return !action->isCheckable(); }),
                  actions.end());
    return actions;
}

QString actionKey(const QAction& action)
{
    return QStringLiteral("actions/") + action.objectName();
}

QString pageKey(const QString& application)
{
    return QStringLiteral("pages/") + application;
}

} // namespace

void WindowMemory::save(const QMainWindow& window)
{
    QSettings settings;
    settings.setValue(geometryKey, window.saveGeometry());
    settings.setValue(stateKey, window.saveState(WindowView::layoutVersion));
    const auto splitters = namedSplitters(window);
    for (const QSplitter* splitter : splitters)
        settings.setValue(splitterKey(*splitter), splitter->saveState());
    const auto actions = checkableActions(window);
    for (const QAction* action : actions)
        settings.setValue(actionKey(*action), action->isChecked());
}

void WindowMemory::restore(QMainWindow& window)
{
    const QSettings settings;
    window.restoreGeometry(settings.value(geometryKey).toByteArray());
    window.restoreState(settings.value(stateKey).toByteArray(), WindowView::layoutVersion);
    const auto splitters = namedSplitters(window);
    for (QSplitter* splitter : splitters)
        splitter->restoreState(settings.value(splitterKey(*splitter)).toByteArray());
    const auto actions = checkableActions(window);
    for (QAction* action : actions)
        action->setChecked(settings.value(actionKey(*action), action->isChecked()).toBool());
}

void WindowMemory::savePage(const QString& application, const QString& page)
{
    QSettings().setValue(pageKey(application), page);
}

QString WindowMemory::getPage(const QString& application)
{
    return QSettings().value(pageKey(application)).toString();
}

} // namespace Vantry
