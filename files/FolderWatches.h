#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Files {

// Tells which of some files may have changed, by watching folders for the names that lead to the files: a
// watch on a file itself misses that another one takes its name. All folders from the top on and the targets
// of links are watched, as far as they are there. Standard library and system only. One thread.
class FolderWatches
{
public:
    using File = int; // the caller's number of a file

    FolderWatches();
    ~FolderWatches();
    FolderWatches(const FolderWatches&) = delete;
    FolderWatches& operator=(const FolderWatches&) = delete;

    // Readable when there is news; -1 where the system gives no watches.
    int getDescriptor() const { return notifier; }

    // Watches the way to the file as it is now; called again when the file may have changed. The path is
    // absolute. Empty on success, otherwise the reason why changes of the file may go unnoticed.
    std::string follow(File file, const std::string& path);
    void forget(File file);

    // Takes what there is of news without waiting: the files that may have changed, once each, and whether a
    // program was still writing the file then. All are named when the system has lost some.
    std::map<File, bool> takeNews();

private:
    using Place = std::pair<int, std::string>;          // a watched folder's number, and a name in it
    using FilesAt = std::map<Place, std::vector<File>>; // in their order; at the upper folders, nearly all
    using Places = std::vector<FilesAt::iterator>;

    // What is known of a folder on a way until the next news: nothing needs to be asked again, since any
    // change comes after it.
    struct Known
    {
        int watch;
        unsigned kinds;
        bool isRemote;
    };

    const Known* watchFolder(const std::string& folder, unsigned kinds);
    void release(int watch);

    int notifier = -1;
    std::map<int, int> uses; // how many places each watched folder has
    FilesAt filesAt;
    std::map<File, Places> placesOf;
    std::map<std::string, Known> known; // by the folders' paths
};

} // namespace Files
