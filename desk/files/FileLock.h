#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QAction>
#include <QIcon>

#include <functional>
#include <memory>

namespace Vantry {

class BackendFiles;

// Locks the file of the selected node against edits, and unlocks it. GUI thread.
class FileLock : public QAction
{
    Q_OBJECT

public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;
    using SelectedPath = std::function<QString()>; // empty without a selection

    // The files outlive it.
    FileLock(std::shared_ptr<Repository> repository, BackendFiles& files, SelectedPath selectedPath,
             QObject* parent);

private:
    void look();
    void lock(bool isLocked);

    std::shared_ptr<Repository> repository;
    BackendFiles& files;
    const SelectedPath selectedPath;
    QString backend; // of the selected node, as it is shown
    const QIcon lockedIcon;
    const QIcon unlockedIcon;
};

} // namespace Vantry
