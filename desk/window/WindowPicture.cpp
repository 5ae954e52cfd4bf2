#include "desk/window/WindowPicture.h"

#include "desk/window/MainWindow.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QImageWriter>
#include <QPixmap>
#include <QSaveFile>
#include <QTreeView>

#include <algorithm>
#include <cstdio>

namespace Vantry {

namespace {

constexpr int settlingTime = 250; // milliseconds in which models and views follow a change

// Empty when the picture was written, otherwise why it was not.
QString write(const QImage& picture, const QString& fileName)
{
    const QByteArray format = QFileInfo(fileName).suffix().toLower().toLatin1();
    if (!QImageWriter::supportedImageFormats().contains(format))
        return WindowPicture::tr("the ending must name a kind of picture, as in .png");
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    QImageWriter writer(&file, format);
    if (!writer.write(picture))
        return writer.errorString();
    return file.commit() ? QString() : file.errorString();
}

QModelIndexList childrenOf(const QModelIndexList& parents)
{
    QModelIndexList children;
    for (const QModelIndex& parent : parents) {
        for (int row = 0; row < parent.model()->rowCount(parent); ++row)
            children.append(parent.model()->index(row, 0, parent));
    }
    return children;
}

// How many rows more the view can show.
int freeRows(const QTreeView& tree)
{
    int shown = 0;
    for (QModelIndex index = tree.model()->index(0, 0); index.isValid(); index = tree.indexBelow(index))
        ++shown;
    const int rowHeight = tree.visualRect(tree.model()->index(0, 0)).height();
    return rowHeight > 0 ? tree.viewport()->height() / rowHeight - shown : 0;
}

// Those of the items that were opened, since their children fit into the view.
QModelIndexList openWhatFits(QTreeView& tree, const QModelIndexList& items)
{
    QModelIndexList opened;
    for (const QModelIndex& item : items) {
        const int children = tree.model()->rowCount(item);
        if (children > 0 && children <= freeRows(tree)) {
            tree.expand(item);
            opened.append(item);
        }
    }
    return opened;
}

QModelIndexList openRoots(QTreeView& tree)
{
    using Utilities::ModelViews::AttributeTreeViewModel;
    QModelIndexList roots;
    for (int row = 0; row < tree.model()->rowCount(); ++row) {
        const QModelIndex root = tree.model()->index(row, 0);
        if (root.data(AttributeTreeViewModel::BackendRootRole).toBool())
            roots.append(root);
    }
    if (roots.isEmpty())
        return {};
    const QModelIndex last = roots.last();
    std::stable_sort(roots.begin(), roots.end(), [&tree](const QModelIndex& a, const QModelIndex& b) {
        return tree.model()->rowCount(a) < tree.model()->rowCount(b);
    });
    const QModelIndexList opened = openWhatFits(tree, roots);
    tree.expand(last);
    return opened;
}

} // namespace

WindowPicture::WindowPicture(MainWindow& mainWindow, QString fileName)
    : window(mainWindow), file(std::move(fileName))
{
    window.resize(1100, 720); // the screen may be smaller
    timer.setInterval(settlingTime);
    connect(&timer, &QTimer::timeout, this, &WindowPicture::waitForFiles);
    timer.start();
}

void WindowPicture::waitForFiles()
{
    if (window.isOpeningFiles())
        return;
    timer.stop();
    QTimer::singleShot(settlingTime, this, &WindowPicture::openTrees);
}

// Opens what fits into the tree as it is drawn, so that every file shows something of itself: small backends
// before large ones, then what is below them. The last one may be cut off, since nothing comes after it.
void WindowPicture::openTrees()
{
    const auto trees = window.findChildren<QTreeView*>();
    for (QTreeView* tree : trees) {
        if (!tree->model())
            continue;
        const auto opened = openRoots(*tree);
        openWhatFits(*tree, childrenOf(opened));
    }
    QTimer::singleShot(settlingTime, this, &WindowPicture::draw);
}

void WindowPicture::draw()
{
    QStringList problems = window.getFileProblems();
    const QString fault = write(window.grab().toImage(), file);
    if (!fault.isEmpty())
        problems += tr("the picture could not be written to %1: %2").arg(file, fault);
    for (const QString& problem : problems)
        std::fprintf(stderr, "vantry-desk: %s\n", qUtf8Printable(problem));
    QCoreApplication::exit(problems.isEmpty() ? 0 : 1);
}

} // namespace Vantry
