#pragma once

#include "desk/common/LatestTask.h"
#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <memory>

class QWidget;

namespace Vantry {

// Follows where the attribute that is current in the tree of a window is in its file, through selections and
// edits. It looks the place up on another thread. GUI thread.
class PlaceWatch : public QObject
{
    Q_OBJECT

public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;
    using TextPlace = FrameworkCore::AppConfig::Interfaces::TextPlace;

    // The window outlives it.
    PlaceWatch(std::shared_ptr<Repository> repository, const QWidget& window, QObject* parent = nullptr);

    // To be called again and again, for what no signal tells.
    void look();

    const QString& getPath() const { return path; } // empty without a selection
    const QString& getBackend() const { return backend; }

    // Line 0 while it is not known, and for what is in no file.
    const TextPlace& getPlace() const { return place; }

    // Where that is in the file as it is, without what is unsaved.
    static FrameworkCore::AppConfig::FilePosition onDisk(const TextPlace& place);

signals:
    void selected(const QString& path);
    void placed(); // also when the place was lost

private:
    void followTrees();
    void find();

    std::shared_ptr<Repository> repository;
    const QWidget& window;
    QString path;
    QString backend;
    quint64 revision = 0; // of the backend, for which the place was asked
    TextPlace place;
    LatestTask finder;
};

} // namespace Vantry
