#include "desk/changes/ChangesFeed.h"

#include "desk/files/BackendFiles.h"

#include <algorithm>

namespace Vantry {

ChangesFeed::ChangesFeed(std::shared_ptr<Repository> attributes, BackendFiles& backendFiles, QObject* parent)
    : QObject(parent), repository(std::move(attributes)), files(backendFiles)
{
    connect(&finder, &LatestTask::failed, this, &ChangesFeed::failed);
}

void ChangesFeed::look()
{
    const auto changes = repository->getChangesInterface();
    Revisions present;
    for (const QString& name : files.getWatch().getNames())
        present.emplace_back(name, changes->getChangesRevision(name));
    if (present == asked)
        return;
    asked = present;
    nameBackends();
    finder.start([this, present, names = labels, before = known, changes]() -> LatestTask::Result {
        std::vector<ChangedFile> now;
        for (const auto& [name, number] : present) {
            const auto isSame = [&backend = name, revision = number](const ChangedFile& file) {
                return file.backend == backend && file.revision == revision;
            };
            const auto same = std::find_if(before.begin(), before.end(), isSame);
            if (same != before.end()) {
                now.push_back(*same);
                continue;
            }
            ChangedFile file{name, names.value(name), number, changes->getUnsavedChanges(name), {}};
            changes->getUnsavedDiff(name, file.diff);
            now.push_back(std::move(file));
        }
        return [this, now] {
            known = now;
            emit found(known);
        };
    });
}

// A name depends on all open files, which may be thousands.
void ChangesFeed::nameBackends()
{
    QStringList unnamed;
    for (const auto& backend : *asked) {
        if (!labels.contains(backend.first))
            unnamed.append(backend.first);
    }
    const QStringList names = unnamed.isEmpty() ? QStringList() : files.getLabels(unnamed);
    for (int number = 0; number < names.size(); ++number)
        labels.insert(unnamed[number], names[number]);
}

void ChangesFeed::forget()
{
    asked.reset();
    known.clear();
}

} // namespace Vantry
