#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QHash>
#include <QString>
#include <QVariant>

#include <atomic>
#include <benchmark/benchmark.h>
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
void update(Floor& floor, int first, int end);

// Creates the attributes and registers the callback on each.
void create(RepositoryInterface& repository, int count, const UpdateCallback& callback = countUpdate);

// Writes the attributes from `first` on to `end`.
void update(RepositoryInterface& repository, int first, int end);

// Has a row work on few, many and very many attributes.
inline void sizes(benchmark::internal::Benchmark* row)
{
    row->Arg(1000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
}

} // namespace LoadLoops
