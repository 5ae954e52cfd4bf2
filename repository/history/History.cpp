#include "repository/history/History.h"

#include "repository/backends/Backend.h"
#include "repository/common/Texts.h"

#include <algorithm>

namespace Repository {

namespace {

// The scopes that are open on this thread, of any repository.
struct OpenScope
{
    const History* history;
    StepRecorder* recorder;
};

thread_local std::vector<OpenScope> openHere;
thread_local int muteDepth = 0;

StepRecorder* recorderOf(const History& history)
{
    for (const OpenScope& scope : openHere) {
        if (scope.history == &history)
            return scope.recorder;
    }
    return nullptr;
}

bool touchesClosed(const HistoryStep& step)
{
    return std::any_of(step.changes.begin(), step.changes.end(),
                       [](const BackendChange& change) { return change.backend->isClosed(); });
}

} // namespace

bool History::recordsHere() const
{
    if (editingThread.load(std::memory_order_relaxed) == std::this_thread::get_id())
        return muteDepth == 0;
    return openScopes.load(std::memory_order_relaxed) > 0 && muteDepth == 0 && recorderOf(*this);
}

std::optional<HistoryStep> History::take(Direction direction)
{
    const std::lock_guard lock(mutex);
    std::deque<HistoryStep>& steps = direction == Direction::Undo ? done : undone;
    if (steps.empty())
        return {};
    HistoryStep step = std::move(steps.back());
    steps.pop_back();
    size -= step.size;
    addedSinceTake = 0;
    return step;
}

void History::settle(HistoryStep step, Direction takenFrom, bool isDone)
{
    const std::lock_guard lock(mutex);
    const bool toUndone = (takenFrom == Direction::Undo) == isDone;
    if (touchesClosed(step) || (toUndone && addedSinceTake > 0))
        return;
    size += step.size;
    (toUndone ? undone : done).push_back(std::move(step));
}

void History::add(HistoryStep step)
{
    std::deque<HistoryStep> dropped; // dies without the lock
    const std::lock_guard lock(mutex);
    if (step.changes.empty() || touchesClosed(step))
        return;
    for (const HistoryStep& old : undone)
        size -= old.size;
    dropped.swap(undone);
    ++addedSinceTake;
    size += step.size;
    done.push_back(std::move(step));
    trim();
}

void History::trim()
{
    while (size > bound && !done.empty()) {
        size -= done.front().size;
        done.pop_front();
    }
}

void History::forgetClosed()
{
    const std::lock_guard lock(mutex);
    for (std::deque<HistoryStep>* steps : {&done, &undone}) {
        const auto kept = std::remove_if(steps->begin(), steps->end(), [this](const HistoryStep& step) {
            const bool isGone = touchesClosed(step);
            size -= isGone ? step.size : 0;
            return isGone;
        });
        steps->erase(kept, steps->end());
    }
}

QString History::getName(Direction direction) const
{
    const std::lock_guard lock(mutex);
    const std::deque<HistoryStep>& steps = direction == Direction::Undo ? done : undone;
    return steps.empty() ? QString() : steps.back().name;
}

History::Scope::Scope(History& ofHistory, const StepName& name) : history(ofHistory)
{
    if (!history.recordsHere())
        return;
    recorder = recorderOf(history);
    if (!recorder)
        open(name());
}

History::Scope::Scope(History& ofHistory, const QString& name) : history(ofHistory), isAsked(true)
{
    ++history.openScopes;
    recorder = recorderOf(history);
    if (!recorder)
        open(name);
}

void History::Scope::open(const QString& name)
{
    own = std::make_unique<StepRecorder>(name);
    recorder = own.get();
    openHere.push_back({&history, recorder});
}

History::Scope::~Scope()
{
    if (isAsked)
        --history.openScopes;
    if (!own)
        return;
    const auto ended = std::find_if(openHere.begin(), openHere.end(),
                                    [this](const OpenScope& scope) { return scope.recorder == recorder; });
    if (ended != openHere.end())
        openHere.erase(ended);
    history.add(own->finish());
}

struct History::Write::Recording
{
    Recording(History& ofHistory, const Node& node)
        : scope(ofHistory,
                [&node] { return Texts::tr("Write %1").arg(node.backend->readable(node.getPath())); })
    {
        change.path = node.getPath();
        change.before = NodeState::of(node);
        change.spellingBefore = node.backend->spell(change.path);
    }

    Scope scope;
    ValueChange change;
};

void History::Write::Deleter::operator()(Recording* finished) const
{
    delete finished;
}

void History::Write::record(History& history, const Node& node)
{
    if (StepRecorder::records(node.backend) && node.isReadable() && history.recordsHere())
        recording.reset(new Recording(history, node));
}

void History::Write::finish(const Node& node)
{
    ValueChange& change = recording->change;
    change.after = NodeState::of(node);
    change.spellingAfter = node.backend->spell(change.path);
    recording->scope.getRecorder()->addWrite(*node.backend, std::move(change));
}

History::Mute::Mute()
{
    ++muteDepth;
}

History::Mute::~Mute()
{
    --muteDepth;
}

} // namespace Repository
