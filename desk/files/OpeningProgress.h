#pragma once

#include "desk/files/FileMounter.h"

#include <QTimer>
#include <QWidget>

class QProgressBar;

namespace Utilities::ModelViews::Widgets {
class PlainLabel;
}

namespace Vantry {

// How far the opening of files and folders has come; hidden until it takes long. GUI thread.
class OpeningProgress : public QWidget
{
    Q_OBJECT

public:
    // The mounter outlives it.
    OpeningProgress(FileMounter& mounter, std::shared_ptr<FileMounter::Repository> repository);

private:
    void look();

    FileMounter& mounter;
    const std::shared_ptr<FileMounter::Repository> repository;
    Utilities::ModelViews::Widgets::PlainLabel* text; // children
    QProgressBar* bar;
    QTimer timer;
};

} // namespace Vantry
