#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QHash>
#include <QString>
#include <QVariant>

#include <atomic>
#include <memory>
#include <utility>

// The loops of the load-test page, on a repository and on the floor: a bare hash of values and functions that
// does the same work without what a repository is for.
namespace LoadLoops {

using FrameworkCore::AppConfig::Interfaces::RepositoryInterface;
using FrameworkCore::AppConfig::Interfaces::UpdateCallback;

using Floor = QHash<QString, std::pair<QVariant, UpdateCallback>>;

extern std::atomic<int> updateCounter;

// The callback of all loops: adds one to the counter.
void countUpdate(const QString&, const FrameworkCore::Notification::UpdatePoint&,
                 const FrameworkCore::Notification::UpdateResult&, const QVariant&, const QString&);

QString demoPath(int i);
QString demoPattern(int i);

void create(Floor& floor, int count);
void update(Floor& floor, int count);

// Creates the attributes and registers a callback on each.
void create(RepositoryInterface& repository, int count);

// Registers a callback on the pattern of each attribute as well.
void registerWildcards(RepositoryInterface& repository, int count);

// Writes the attributes from `first` on to `end`.
void update(RepositoryInterface& repository, int first, int end);

} // namespace LoadLoops
