#pragma once

#include "host/FrameworkCore/AppConfig/HistoryInterface.h"
#include "repository/history/StepRecorder.h"
#include "repository/store/Node.h"

#include <atomic>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace Repository {

// The steps that can be taken back, and who records them. Any thread; its lock is taken after those of the
// tree and before those of backends.
class History
{
public:
    static constexpr std::size_t defaultBound = std::size_t(64) << 20; // bytes

    enum class Direction { Undo, Redo };

    using StepName = std::function<QString()>;

    class Scope;
    class Write;
    class Mute;

    explicit History(std::size_t memoryBound) : bound(memoryBound) {}

    void recordThisThread() { editingThread = std::this_thread::get_id(); }

    // The newest step of that direction, which is no longer in history then; settle puts it where it belongs.
    std::optional<HistoryStep> take(Direction direction);
    void settle(HistoryStep step, Direction takenFrom, bool isDone);

    // Drops the steps that touch a closed backend.
    void forgetClosed();

    QString getName(Direction direction) const;

private:
    bool recordsHere() const;
    void add(HistoryStep step);
    void trim();

    const std::size_t bound;
    std::atomic<std::thread::id> editingThread{};
    std::atomic<int> openScopes{0}; // those that were asked for

    mutable std::mutex mutex; // guards what follows
    std::deque<HistoryStep> undone;
    std::deque<HistoryStep> done;
    std::size_t size = 0;       // of all steps
    quint64 addedSinceTake = 0; // a step that was taken before others came cannot be done again
};

// All that its thread changes while it exists is one step, if it is to be recorded. A scope within a scope
// adds to the outer one. No lock of the store is held when it ends.
class History::Scope
{
public:
    // Records if the thread is recorded; the name is only made then.
    Scope(History& history, const StepName& name);

    // Records in any case.
    Scope(History& history, const QString& name);

    ~Scope();
    Q_DISABLE_COPY(Scope)

    // Null when nothing is recorded.
    StepRecorder* getRecorder() const { return recorder; }

private:
    void open(const QString& name);

    History& history;
    StepRecorder* recorder = nullptr; // not owned
    std::unique_ptr<StepRecorder> own;
    bool isAsked = false;
};

// The record of a write of one value. It costs a look at one number unless something is recorded.
class History::Write
{
public:
    // The lock of the node's attribute is held, before and after the write.
    void begin(History& history, const Node& node)
    {
        if (node.backend)
            record(history, node);
    }
    void end(const Node& node)
    {
        if (recording)
            finish(node);
    }

private:
    struct Recording;
    struct Deleter
    {
        void operator()(Recording* recording) const;
    };

    void record(History& history, const Node& node);
    void finish(const Node& node);

    std::unique_ptr<Recording, Deleter> recording;
};

// While it exists, its thread records nothing.
class History::Mute
{
public:
    Mute();
    ~Mute();
    Q_DISABLE_COPY(Mute)
};

} // namespace Repository
