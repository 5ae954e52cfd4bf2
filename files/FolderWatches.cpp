#include "files/FolderWatches.h"

#include "files/FileDescriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <set>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace Files {

namespace {

constexpr unsigned comesAndGoes =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF;
constexpr unsigned content = IN_MODIFY | IN_CLOSE_WRITE | IN_ATTRIB;

// What other machines write there comes without news.
bool isRemote(const std::string& folder)
{
    constexpr std::array<std::uint32_t, 5> kinds{0x6969, 0x517B, 0xFF534D42, 0xFE534D42, 0x65735546};
    struct statfs status = {};
    return ::statfs(folder.c_str(), &status) == 0 &&
           std::find(kinds.begin(), kinds.end(), static_cast<std::uint32_t>(status.f_type)) != kinds.end();
}

std::string join(const std::string& folder, const std::string& name)
{
    return folder == "/" ? folder + name : folder + '/' + name;
}

// Walks a path from the top, a name at a time, and into the targets of links.
struct Way
{
    std::string folder = "/"; // without links
    std::string rest;         // what is still to be walked
    int links = 0;

    // The next name; empty at the end.
    std::string next()
    {
        while (true) {
            rest.erase(0, std::min(rest.find_first_not_of('/'), rest.size()));
            const std::string name = rest.substr(0, rest.find('/'));
            rest.erase(0, name.size());
            if (name == "..")
                folder.erase(std::max<std::size_t>(folder.rfind('/'), 1));
            else if (name != ".")
                return name;
        }
    }

    bool isAtEnd() const { return rest.find_first_not_of('/') == std::string::npos; }

    // Goes on from the name; false where the way ends, because the file is reached or something is missing.
    bool enter(const std::string& name)
    {
        constexpr int mostLinks = 40;
        const std::string path = join(folder, name);
        struct stat status = {};
        if (::lstat(path.c_str(), &status) != 0)
            return false;
        if (S_ISLNK(status.st_mode)) {
            std::string target;
            if (SystemCalls::system().readLink(path, target) != 0 || target.empty() || ++links > mostLinks)
                return false;
            if (target.front() == '/')
                folder = "/";
            rest = target + '/' + rest;
            return true;
        }
        folder = path;
        return S_ISDIR(status.st_mode);
    }
};

} // namespace

FolderWatches::FolderWatches() : notifier(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
}

FolderWatches::~FolderWatches()
{
    if (notifier >= 0)
        ::close(notifier);
}

bool FolderWatches::add(const std::string& folder, const std::string& name, unsigned kinds,
                        std::vector<Place>& places)
{
    const int watch = ::inotify_add_watch(notifier, folder.c_str(), kinds | IN_ONLYDIR | IN_MASK_ADD);
    if (watch < 0)
        return errno == ENOENT || errno == ENOTDIR; // it has gone just now, of which its own folder has news
    ++uses[watch];
    places.emplace_back(watch, name);
    return true;
}

std::string FolderWatches::follow(File file, const std::string& path)
{
    if (notifier < 0)
        return systemReason(EMFILE);
    std::string reason;
    std::vector<Place> places;
    Way way;
    way.rest = path;
    for (std::string name = way.next(); !name.empty(); name = way.next()) {
        const std::string folder = way.folder;
        const bool isFile = way.isAtEnd();
        if (!add(folder, name, isFile ? comesAndGoes | content : comesAndGoes, places) && reason.empty())
            reason = folder + (": " + systemReason());
        else if (isFile && isRemote(folder))
            reason = folder + " may be written by other machines";
        if (!way.enter(name))
            break;
    }
    forget(file); // only now, so that no folder on both ways is without a watch in between
    for (const Place& place : places)
        filesAt.emplace(place, file);
    placesOf[file] = std::move(places);
    return reason;
}

void FolderWatches::forget(File file)
{
    const auto known = placesOf.find(file);
    if (known == placesOf.end())
        return;
    for (const Place& place : known->second) {
        const auto [begin, end] = filesAt.equal_range(place);
        const auto entry = std::find_if(begin, end, [file](const auto& at) { return at.second == file; });
        if (entry != end)
            filesAt.erase(entry);
    }
    const std::vector<Place> places = std::move(known->second);
    placesOf.erase(known);
    release(places);
}

void FolderWatches::release(const std::vector<Place>& places)
{
    for (const auto& [watch, name] : places) {
        const auto use = uses.find(watch);
        if (use == uses.end() || --use->second > 0)
            continue;
        uses.erase(use);
        ::inotify_rm_watch(notifier, watch);
    }
}

std::vector<FolderWatches::File> FolderWatches::takeNews()
{
    std::set<File> concerned;
    alignas(inotify_event) std::array<char, 16384> buffer;
    ssize_t size = 0;
    while ((size = ::read(notifier, buffer.data(), buffer.size())) > 0) {
        for (std::size_t at = 0; at < static_cast<std::size_t>(size);) {
            inotify_event event = {};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            const char* const name = buffer.data() + at + sizeof event;
            const auto [begin, end] = filesAt.equal_range(Place(event.wd, event.len > 0 ? name : ""));
            for (auto entry = begin; entry != end; ++entry)
                concerned.insert(entry->second);
            const bool isOfFolder = (event.mask & (IN_IGNORED | IN_DELETE_SELF | IN_MOVE_SELF)) != 0;
            const bool isLost = (event.mask & IN_Q_OVERFLOW) != 0;
            for (const auto& [place, file] : filesAt) {
                if (isLost || (isOfFolder && place.first == event.wd))
                    concerned.insert(file);
            }
            at += sizeof event + event.len;
        }
    }
    return {concerned.begin(), concerned.end()};
}

} // namespace Files
