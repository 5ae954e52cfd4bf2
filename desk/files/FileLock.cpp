#include "desk/files/FileLock.h"

#include "desk/common/MenuText.h"
#include "desk/files/BackendFiles.h"
#include "host/Utilities/ModelViews/ToolTipText.h"

#include <QFileInfo>

namespace Vantry {

FileLock::FileLock(std::shared_ptr<Repository> attributes, BackendFiles& backendFiles, SelectedPath selected,
                   QObject* parent)
    : QAction(parent), repository(std::move(attributes)), files(backendFiles),
      selectedPath(std::move(selected)), lockedIcon(QStringLiteral(":/VantryHost/locked.png")),
      unlockedIcon(QStringLiteral(":/VantryHost/unlocked.png"))
{
    setObjectName(QStringLiteral("lockFile"));
    setCheckable(true);
    setShortcut(Qt::CTRL + Qt::Key_L);
    connect(this, &QAction::triggered, this, &FileLock::lock);
    connect(&files.getWatch(), &Utilities::UnsavedBackends::looked, this, &FileLock::look);
    look();
}

void FileLock::look()
{
    const QString path = selectedPath();
    const QString selected =
        path.isEmpty() ? QString() : repository->getTreeInterface()->getNodeInformation(path).backend;
    const bool isLocked = repository->getBackendInterface()->getLockedBackends().contains(selected);
    if (selected == backend && isLocked == isChecked() && !text().isEmpty())
        return;
    backend = selected;
    setEnabled(!backend.isEmpty());
    setChecked(isLocked);
    setIcon(isLocked ? lockedIcon : unlockedIcon);
    const QString name = backend.isEmpty() ? QString() : QFileInfo(files.getLocation(backend)).fileName();
    setText(name.isEmpty() ? tr("Loc&k the File") : tr("Loc&k %1").arg(menuText(name)));
    const QString keys = shortcut().toString(QKeySequence::NativeText);
    const QString tip = name.isEmpty() ? tr("Without a selected file there is nothing to lock (%1)").arg(keys)
                        : isLocked     ? tr("%1 is locked against changes; unlock it (%2)").arg(name, keys)
                                       : tr("%1 can be changed; lock it (%2)").arg(name, keys);
    setToolTip(Utilities::ModelViews::toolTipText(tip));
}

// Why it is refused is in the log.
void FileLock::lock(bool isLocked)
{
    setChecked(!isLocked); // until it is
    look();                // the selection may be another one since
    if (!backend.isEmpty())
        repository->getBackendInterface()->setLocked(backend, isLocked);
    look();
}

} // namespace Vantry
