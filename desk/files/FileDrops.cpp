#include "desk/files/FileDrops.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>
#include <QWindow>

namespace Vantry {

namespace {

QStringList localFiles(const QMimeData& data)
{
    QStringList files;
    const auto urls = data.urls();
    for (const QUrl& url : urls) {
        if (url.isLocalFile())
            files.append(url.toLocalFile());
    }
    return files;
}

bool isDragEvent(const QEvent& event)
{
    return event.type() == QEvent::DragEnter || event.type() == QEvent::DragMove ||
           event.type() == QEvent::Drop;
}

} // namespace

FileDrops::FileDrops(QWidget& watchedWindow) : QObject(&watchedWindow), window(watchedWindow)
{
    window.setAcceptDrops(true);
    window.installEventFilter(this);
}

bool FileDrops::eventFilter(QObject* watched, QEvent* event)
{
    // What is dragged comes to the QWindow, which is there from now on, and from it to the widgets.
    if (watched == &window && event->type() == QEvent::WinIdChange && window.windowHandle())
        window.windowHandle()->installEventFilter(this);
    if (watched != window.windowHandle() || !isDragEvent(*event) || QApplication::activeModalWidget())
        return false;
    auto& drop = static_cast<QDropEvent&>(*event);
    const QStringList files = localFiles(*drop.mimeData());
    if (files.isEmpty())
        return false;
    // To move them would be the end of the files where they lie.
    if (drop.possibleActions() & Qt::CopyAction)
        drop.setDropAction(Qt::CopyAction);
    drop.accept();
    if (event->type() == QEvent::Drop)
        emit dropped(files);
    return true;
}

} // namespace Vantry
