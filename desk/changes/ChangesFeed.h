#pragma once

#include "desk/changes/ChangedFile.h"
#include "desk/common/LatestTask.h"
#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QHash>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace Vantry {

class BackendFiles;

// Looks up what is unsaved, on another thread and of the files alone that were edited meanwhile. GUI thread.
class ChangesFeed : public QObject
{
    Q_OBJECT

public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    // The files outlive it.
    ChangesFeed(std::shared_ptr<Repository> repository, BackendFiles& files, QObject* parent = nullptr);

    // To be called again and again; costs next to nothing while nothing was edited.
    void look();

    // What was found is out of date, as after a save, which leaves texts as they are.
    void forget();

signals:
    void found(const std::vector<Vantry::ChangedFile>& changed);
    void failed(const QString& reason);

private:
    using Revisions = std::vector<std::pair<QString, quint64>>; // by backend

    void nameBackends();

    std::shared_ptr<Repository> repository;
    BackendFiles& files;
    LatestTask finder;
    std::optional<Revisions> asked;
    std::vector<ChangedFile> known; // that was found last
    QHash<QString, QString> labels; // of backends that were edited
};

} // namespace Vantry
