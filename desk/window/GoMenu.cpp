#include "desk/window/GoMenu.h"

#include "desk/common/MenuText.h"

#include <QSettings>

#include <algorithm>

namespace Vantry {

namespace {

const QLatin1String bookmarksKey("bookmarks");
constexpr int mostVisited = 100;

} // namespace

GoMenu::GoMenu(SelectedPath selected, ReadablePath readable, QWidget* parent)
    : QMenu(tr("&Go"), parent), selectedPath(std::move(selected)), readablePath(std::move(readable)),
      back(addAction(tr("&Back"), this, &GoMenu::goBack, Qt::ALT + Qt::Key_Left)),
      forward(addAction(tr("&Forward"), this, &GoMenu::goForward, Qt::ALT + Qt::Key_Right))
{
    back->setObjectName(QStringLiteral("goBack"));
    forward->setObjectName(QStringLiteral("goForward"));
    addSeparator();
    bookmark =
        addAction(tr("Bookmark the &Selected Node"), this, &GoMenu::toggleBookmark, Qt::CTRL + Qt::Key_B);
    bookmark->setObjectName(QStringLiteral("bookmark"));
    removal = addMenu(tr("&Remove a Bookmark"));
    removal->setObjectName(QStringLiteral("removeBookmark"));
    addSeparator();
    connect(this, &QMenu::aboutToShow, this, &GoMenu::offer);
    connect(this, &QMenu::aboutToShow, this, &GoMenu::nameBookmarks);
    readBookmarks();
    offer();
}

// What one could have gone forward to is given up.
void GoMenu::noteJump(const QString& from, const QString& to)
{
    visited = visited.mid(0, at + 1);
    if (!from.isEmpty() && (visited.isEmpty() || visited.last() != from))
        visited.append(from);
    if (visited.isEmpty() || visited.last() != to)
        visited.append(to);
    visited = visited.mid(std::max(0, visited.size() - mostVisited));
    at = visited.size() - 1;
    offer();
}

// Who has gone on by hand meanwhile first comes to where the last jump led.
void GoMenu::goBack()
{
    const QString selected = selectedPath();
    if (at >= 0 && selected != visited[at] && !selected.isEmpty())
        visited.insert(at + 1, selected);
    else if (at > 0)
        --at;
    else
        return;
    offer();
    emit selectRequested(visited[at]);
}

void GoMenu::goForward()
{
    if (at + 1 >= visited.size())
        return;
    ++at;
    offer();
    emit selectRequested(visited[at]);
}

void GoMenu::readBookmarks()
{
    const QStringList present = QSettings().value(bookmarksKey).toStringList();
    if (present == bookmarks)
        return;
    bookmarks = present;
    showBookmarks();
}

void GoMenu::toggleBookmark()
{
    const QString path = selectedPath();
    if (path.isEmpty())
        return;
    readBookmarks();
    QStringList changed = bookmarks;
    if (changed.removeAll(path) == 0)
        changed.append(path);
    keep(changed);
}

void GoMenu::keep(const QStringList& changed)
{
    QSettings().setValue(bookmarksKey, changed);
    readBookmarks();
    offer();
}

// The first nine have keys.
void GoMenu::showBookmarks()
{
    qDeleteAll(entries);
    entries.clear();
    removal->clear();
    removal->setEnabled(!bookmarks.isEmpty());
    for (const QString& path : qAsConst(bookmarks)) {
        QAction* const entry = addAction(QString(), this, [this, path] {
            noteJump(selectedPath(), path);
            emit selectRequested(path);
        });
        if (entries.size() < 9)
            entry->setShortcut(Qt::ALT + Qt::Key_1 + entries.size());
        entries.append(entry);
        const auto remove = [this, path] {
            readBookmarks();
            QStringList others = bookmarks;
            others.removeAll(path);
            keep(others);
        };
        connect(removal->addAction(QString()), &QAction::triggered, this, remove,
                Qt::QueuedConnection); // which deletes the entry
    }
    nameBookmarks();
}

// Which files are open says how to read them.
void GoMenu::nameBookmarks()
{
    for (int number = 0; number < entries.size(); ++number) {
        const QString text = menuText(readablePath(bookmarks[number]));
        entries[number]->setText(text);
        removal->actions().at(number)->setText(text);
    }
}

void GoMenu::offer()
{
    const QString selected = selectedPath();
    back->setEnabled(at >= 0 && (at > 0 || selected != visited[at]));
    forward->setEnabled(at + 1 < visited.size());
    bookmark->setText(bookmarks.contains(selected) ? tr("Remove the Bookmark of the &Selected Node")
                                                   : tr("Bookmark the &Selected Node"));
}

} // namespace Vantry
