#pragma once

#include "repository/history/NodeState.h"
#include "repository/history/TextDelta.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Repository {

class Backend;

// A write of one value: its spellings in the file make undo exact.
struct ValueChange
{
    QString path;
    NodeState before;
    NodeState after;
    std::optional<std::string> spellingBefore;
    std::optional<std::string> spellingAfter;
};

// One place of those that a change of the tree's shape touched.
struct EntryChange
{
    QString path;
    NodeState before;
    NodeState after;
};

// What a step did to one backend: single values first, and then the shape, in entries and as text.
struct BackendChange
{
    std::shared_ptr<Backend> backend;
    std::vector<ValueChange> values;
    std::vector<EntryChange> entries;
    bool hasAllEntries = true;     // otherwise there were too many, and only the text can be brought back
    std::optional<TextDelta> text; // unknown when others wrote into the backend meanwhile

    bool isEmpty() const { return values.empty() && entries.empty() && hasAllEntries && !text; }
};

// What undo takes back at once.
struct HistoryStep
{
    QString name;
    std::vector<BackendChange> changes; // one for each backend
    std::size_t size = 0;               // in memory, about
};

} // namespace Repository
