#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QElapsedTimer>
#include <QObject>
#include <QSet>
#include <QVector>

#include <future>
#include <memory>
#include <utility>

namespace Utilities {

// The attributes that are not saved, and all nodes above them but the roots of their backends. They are
// looked up on another thread, as a file may be large. GUI thread.
class UnsavedPaths : public QObject
{
public:
    using RepositoryInterface = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    explicit UnsavedPaths(std::shared_ptr<RepositoryInterface> repository, QObject* parent = nullptr);

    const QSet<QString>& get() const { return paths; }

    // Looks whether there is something new in the backends that have unsaved changes; cheap, and to be done
    // often.
    void follow(const QStringList& backends);

private:
    using Revisions = QVector<std::pair<QString, quint64>>;

    std::shared_ptr<RepositoryInterface> repository;
    QSet<QString> paths;
    Revisions known; // of the backends, as they were looked up last
    std::future<void> worker;
    QElapsedTimer sinceEnd; // of a look-up
    qint64 pause = 0;       // after it, in milliseconds
};

} // namespace Utilities
