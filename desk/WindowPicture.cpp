#include "desk/WindowPicture.h"

#include "desk/MainWindow.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QImageWriter>
#include <QPixmap>
#include <QSaveFile>
#include <QTreeView>

#include <cstdio>

namespace Vantry {

namespace {

constexpr int settlingTime = 250; // milliseconds in which models and views follow a change

// Empty when the picture was written, otherwise why it was not.
QString write(const QImage& picture, const QString& fileName)
{
    const QByteArray format = QFileInfo(fileName).suffix().toLower().toLatin1();
    if (!QImageWriter::supportedImageFormats().contains(format))
        return QStringLiteral("the ending must name a kind of picture, as in .png");
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    QImageWriter writer(&file, format);
    if (!writer.write(picture))
        return writer.errorString();
    return file.commit() ? QString() : file.errorString();
}

} // namespace

WindowPicture::WindowPicture(MainWindow& mainWindow, QString fileName)
    : window(mainWindow), file(std::move(fileName))
{
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

// Opens the roots of the backends, and what is below them where it is little, so that the picture shows
// content.
void WindowPicture::openTrees()
{
    using Utilities::ModelViews::AttributeTreeViewModel;
    constexpr int mostRowsOfARoot = 12;
    const auto trees = window.findChildren<QTreeView*>();
    for (QTreeView* tree : trees) {
        const QAbstractItemModel* model = tree->model();
        for (int row = 0; model && row < model->rowCount(); ++row) {
            const QModelIndex root = model->index(row, 0);
            if (!root.data(AttributeTreeViewModel::BackendRootRole).toBool())
                continue;
            tree->expand(root);
            const int below = model->rowCount(root);
            for (int child = 0; below <= mostRowsOfARoot && child < below; ++child)
                tree->expand(model->index(child, 0, root));
        }
    }
    QTimer::singleShot(settlingTime, this, &WindowPicture::draw);
}

void WindowPicture::draw()
{
    const QString problem = write(window.grab().toImage(), file);
    if (!problem.isEmpty())
        std::fprintf(stderr, "vantry-desk: the picture could not be written to %s: %s\n",
                     qUtf8Printable(file), qUtf8Printable(problem));
    QCoreApplication::exit(problem.isEmpty() ? 0 : 1);
}

} // namespace Vantry
