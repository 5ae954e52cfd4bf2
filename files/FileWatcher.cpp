#include "files/FileWatcher.h"

#include "files/FolderWatches.h"
#include "files/Reason.h"

#include <algorithm>
#include <map>
#include <new>
#include <optional>
#include <poll.h>
#include <set>
#include <sys/eventfd.h>
#include <sys/stat.h>
#include <system_error>
#include <tuple>
#include <unistd.h>
#include <vector>

namespace Files {

namespace {

using Clock = std::chrono::steady_clock;

// What of a file's state changes with every write, the time of its change first; nothing without a file.
using Trace = std::optional<std::tuple<std::chrono::nanoseconds, dev_t, ino_t, off_t>>;

Trace traceOf(const std::string& path)
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0)
        return {};
    const auto changed =
        std::chrono::seconds(status.st_ctim.tv_sec) + std::chrono::nanoseconds(status.st_ctim.tv_nsec);
    return {{changed, status.st_dev, status.st_ino, status.st_size}};
}

bool isEmpty(const Trace& trace)
{
    return trace && std::get<off_t>(*trace) == 0;
}

struct Watched
{
    std::string path;
    FileWatcher::Callback changed;
    std::chrono::system_clock::time_point since;

    // Of the thread alone.
    bool isPolled = false;
    Trace trace; // when it was looked at last
    std::optional<Clock::time_point> due;
    Clock::time_point first; // change of those that are due then
};

} // namespace

// What the thread does, and what it shares with the watcher.
class FileWatcher::Loop
{
public:
    Loop(Report reportPolling, const Settings& times)
        : report(std::move(reportPolling)), settings(times), waker(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC))
    {
    }

    ~Loop()
    {
        if (waker >= 0)
            ::close(waker);
    }

    int add(Watched file)
    {
        const std::lock_guard lock(mutex);
        files.emplace(++lastFile, std::make_shared<Watched>(std::move(file)));
        note(lastFile);
        return lastFile;
    }

    void remove(int file)
    {
        const std::lock_guard lock(mutex);
        files.erase(file);
        note(file);
    }

    void stop()
    {
        const std::lock_guard lock(mutex);
        isStopped = true;
        wake();
    }

    const Report report;

    void run()
    {
        watches.emplace();
        while (goesOn()) {
        }
    }

private:
    bool goesOn()
    {
        try {
            return look();
        } catch (const std::bad_alloc&) {
            loseNews();
            constexpr int soon = 200;
            ::poll(nullptr, 0, soon);
            return true;
        }
    }

    // Where memory is refused for a moment, what has changed is found by looking at the files later.
    void loseNews()
    {
        for (const auto& [number, file] : known)
            file->isPolled = true;
        arePolled = true;
    }

    bool look()
    {
        if (!takeFiles())
            return false;
        wait();
        const Clock::time_point now = Clock::now();
        takeNews();
        pollFiles(now);
        tellDue(now);
        return true;
    }

    void takeNews()
    {
        if (!settings.usesSystem)
            return;
        try {
            const Clock::time_point now = Clock::now();
            for (const auto& [file, isBeingWritten] : watches->takeNews())
                postpone(file, now, isBeingWritten);
        } catch (const std::bad_alloc&) {
            loseNews();
        }
    }

    using Files = std::map<int, std::shared_ptr<Watched>>;

    void wake() const { ::eventfd_write(waker, 1); }

    // The mutex is held. One call wakes the thread for all that come before it looks.
    void note(int otherFile)
    {
        otherFiles.push_back(otherFile);
        if (otherFiles.size() == 1)
            wake();
    }

    // Begins with new files and ends with removed ones; false when the watcher ends.
    bool takeFiles()
    {
        while (!others.empty() || takeOthers()) {
            takeOne(others.back());
            others.pop_back(); // only now: where memory is refused, it comes again
        }
        const std::lock_guard lock(mutex);
        return !isStopped;
    }

    bool takeOthers()
    {
        const std::lock_guard lock(mutex);
        others.swap(otherFiles);
        return !others.empty();
    }

    void takeOne(int number)
    {
        std::shared_ptr<Watched> file;
        {
            const std::lock_guard lock(mutex);
            const auto present = files.find(number);
            if (present != files.end())
                file = present->second;
        }
        if (file)
            begin(number, file);
        else if (known.erase(number) > 0)
            watches->forget(number);
        if (!file)
            awaited.erase(number);
    }

    void begin(int number, const std::shared_ptr<Watched>& file)
    {
        known[number] = file;
        follow(number, *file);
        // The clock of files is coarse.
        constexpr std::chrono::milliseconds tick(20);
        if (!file->trace || std::get<0>(*file->trace) >= file->since.time_since_epoch() - tick)
            postpone(number, Clock::now());
    }

    void follow(int number, Watched& file)
    {
        const std::string reason =
            settings.usesSystem ? watches->follow(number, file.path) : Reason::tr("it was asked for");
        file.isPolled = !reason.empty();
        arePolled = arePolled || file.isPolled;
        file.trace = traceOf(file.path);
        if (file.isPolled && !isReported) {
            isReported = true;
            report(file.path, Reason::tr("it is not watched but looked at every few seconds: %1", {reason}));
        }
    }

    void postpone(int number, Clock::time_point now, bool isBeingWritten = false)
    {
        const auto found = known.find(number);
        if (found == known.end())
            return;
        awaited.insert(number);
        Watched& file = *found->second;
        if (!file.due)
            file.first = now;
        file.due = isBeingWritten ? file.first + settings.writing
                                  : std::min(now + settings.quiet, file.first + settings.longest);
    }

    void pollFiles(Clock::time_point now)
    {
        if (!arePolled || now < nextPolling)
            return;
        nextPolling = now + settings.polling;
        arePolled = false;
        for (const auto& [number, file] : known) {
            arePolled = arePolled || file->isPolled;
            if (file->isPolled && traceOf(file->path) != file->trace)
                postpone(number, now);
        }
    }

    void tellDue(Clock::time_point now)
    {
        Files due; // a copy: when reporting runs out of memory, nothing has changed
        for (const int number : awaited) {
            const std::shared_ptr<Watched>& file = known.at(number);
            if (*file->due <= now)
                due.emplace_hint(due.end(), number, file);
        }
        for (const auto& [number, file] : due) {
            if (*file->due > now) // there was news since
                continue;
            follow(number, *file); // first, so that what changes from here on is reported again
            if (isEmpty(file->trace) && now < file->first + settings.longest) { // it may just be written anew
                file->due = file->first + settings.longest;
                continue;
            }
            file->due.reset();
            awaited.erase(number);
            {
                const std::lock_guard lock(mutex);
                if (isStopped || files.count(number) == 0)
                    continue;
            }
            tell(number, *file);
        }
    }

    void tell(int number, const Watched& file)
    {
        const auto isQuiet = [&] {
            takeNews();
            if (traceOf(file.path) != file.trace) // of which the news is still to come
                postpone(number, Clock::now());
            return !file.due;
        };
        try {
            file.changed(isQuiet);
        } catch (const std::exception& error) { // as for want of memory; the next change is reported again
            report(file.path, Reason::tr("it was changed, but not looked at: %1", {error.what()}));
        }
    }

    void wait() const
    {
        std::optional<Clock::time_point> next;
        if (arePolled)
            next = nextPolling;
        for (const int number : awaited)
            next = std::min(next.value_or(Clock::time_point::max()), *known.at(number)->due);
        int timeout = -1;
        if (next) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(*next - Clock::now());
            timeout = static_cast<int>(std::max<long long>(left.count(), 0));
        }
        constexpr int soon = 200; // where nothing wakes it
        if (waker < 0 && (timeout < 0 || timeout > soon))
            timeout = soon;
        pollfd sources[2] = {{waker, POLLIN, 0}, {watches->getDescriptor(), POLLIN, 0}};
        ::poll(sources, 2, timeout);
        // Where a folder is opened, files come by the thousand: those of a moment are taken at once.
        if ((sources[0].revents & POLLIN) != 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        eventfd_t ignored = 0;
        ::eventfd_read(waker, &ignored);
    }

    const Settings settings;
    const int waker;

    std::mutex mutex; // guards what follows
    Files files;
    int lastFile = 0;
    std::vector<int> otherFiles; // that were added or removed since the thread looked
    bool isStopped = false;

    // Of the thread alone.
    std::optional<FolderWatches> watches;
    Files known;
    std::set<int> awaited;   // the known ones that are due at some time
    bool arePolled = false;  // some may be
    std::vector<int> others; // taken from otherFiles, and not dealt with yet
    Clock::time_point nextPolling;
    bool isReported = false;
};

FileWatcher::FileWatcher(Report report, const Settings& settings)
    : loop(std::make_shared<Loop>(std::move(report), settings))
{
}

FileWatcher::~FileWatcher()
{
    if (!thread.joinable())
        return;
    loop->stop();
    if (thread.get_id() == std::this_thread::get_id())
        thread.detach();
    else
        thread.join();
}

int FileWatcher::watch(const std::string& path, std::chrono::system_clock::time_point since, Callback changed)
{
    Watched file;
    file.path = path;
    file.since = since;
    file.changed = std::move(changed);
    const int number = loop->add(std::move(file));
    const std::string failure = startThread();
    if (!failure.empty())
        loop->report(
            path, Reason::tr("it is not watched until another file is opened: its thread was not started: %1",
                             {failure}));
    return number;
}

// Empty when the thread runs, otherwise why it was not started.
std::string FileWatcher::startThread()
{
    const std::lock_guard lock(starting);
    if (thread.joinable())
        return {};
    try {
        thread = std::thread([shared = loop] { shared->run(); });
        return {};
    } catch (const std::system_error& error) {
        return error.what();
    }
}

void FileWatcher::unwatch(int file)
{
    loop->remove(file);
}

} // namespace Files
