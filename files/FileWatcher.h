#pragma once

#include "files/FilesExport.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace Files {

// Tells when files may have been changed, on a thread of its own that starts with the first file. A file that
// is written in several steps is reported when it is closed and has been quiet for a moment. Where the system
// does not watch, it looks every other second. Standard library and system only. Any thread.
class VANTRY_FILES_EXPORT FileWatcher
{
public:
    struct Settings
    {
        std::chrono::milliseconds quiet{100};    // after the last change
        std::chrono::milliseconds longest{1000}; // after the first one that was not reported yet
        std::chrono::milliseconds writing{5000}; // the same, where a program still has it open to write
        std::chrono::milliseconds polling{2000};
        bool usesSystem = true; // otherwise files are looked at in turns only
    };

    // Whether the file is still as it was when it was found changed, to be asked after it was read: otherwise
    // what was read may be half of something, and the callback is called again when it is quiet.
    using IsQuiet = std::function<bool()>;

    // Both are called on the watcher's thread with no lock held; they may use the watcher and end it. What
    // the first one throws is reported.
    using Callback = std::function<void(const IsQuiet& isQuiet)>;
    // What keeps a file from being watched.
    using Report = std::function<void(const std::string& path, const std::string& reason)>;

    FileWatcher(Report report, const Settings& settings);
    explicit FileWatcher(Report report) : FileWatcher(std::move(report), Settings()) {}

    // Waits for the callback that is running, unless that is who ends the watcher.
    ~FileWatcher();
    FileWatcher(const FileWatcher&) = delete;
    FileWatcher& operator=(const FileWatcher&) = delete;

    // Watches what the absolute path leads to, whether or not there is a file. Changes since the given time
    // are reported, too. The number is for unwatch, after which no call begins.
    // Where the system starts no thread, that is reported at once, on the calling thread, and the file is
    // watched as soon as there is one for another file.
    int watch(const std::string& path, std::chrono::system_clock::time_point since, Callback changed);
    void unwatch(int file);

private:
    class Loop;

    std::string startThread();

    std::shared_ptr<Loop> loop; // shared with the thread, which may outlive the watcher by its last steps
    std::mutex starting;
    std::thread thread; // guarded by starting
};

} // namespace Files
