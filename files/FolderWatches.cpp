#include "files/FolderWatches.h"

#include "files/FileDescriptor.h"
#include "files/Reason.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
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

    // Goes on from a path in the folder; false where the way ends, because the file is reached or something
    // is missing.
    bool enter(const std::string& path)
    {
        constexpr int mostLinks = 40;
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

// Null, with errno, where the system refuses one.
const FolderWatches::Known* FolderWatches::watchFolder(const std::string& folder, unsigned kinds)
{
    const auto found = known.find(folder);
    if (found != known.end() && (found->second.kinds & kinds) == kinds)
        return &found->second;
    const int watch = ::inotify_add_watch(notifier, folder.c_str(), kinds | IN_ONLYDIR | IN_MASK_ADD);
    if (watch < 0)
        return nullptr;
    Known& now = known[folder];
    now = {watch, kinds, (kinds & content) != 0 && isRemote(folder)};
    return &now;
}

std::string FolderWatches::follow(File file, const std::string& filePath)
{
    if (notifier < 0)
        return systemReason(EMFILE);
    std::string reason;
    std::vector<Place> places;
    Way way;
    way.rest = filePath;
    for (std::string name = way.next(); !name.empty(); name = way.next()) {
        const std::string folder = way.folder;
        const bool isFile = way.isAtEnd();
        const Known* const watched = watchFolder(folder, isFile ? comesAndGoes | content : comesAndGoes);
        const bool hasJustGone = errno == ENOENT || errno == ENOTDIR; // of which its own folder has news
        if (watched) {
            ++uses[watched->watch];
            places.emplace_back(watched->watch, name);
            if (isFile && watched->isRemote)
                reason = Reason::tr("%1 may be written by other machines", {folder});
        } else if (!hasJustGone && reason.empty()) {
            reason = folder + (": " + systemReason());
        }
        const std::string path = join(folder, name);
        if (known.count(path) > 0)
            way.folder = path;
        else if (!way.enter(path))
            break;
    }
    forget(file); // only now, so that no folder on both ways is without a watch in between
    Places& found = placesOf[file];
    found.reserve(places.size());
    for (Place& place : places) {
        const auto at = filesAt.try_emplace(std::move(place)).first;
        std::vector<File>& files = at->second;
        const auto next = std::lower_bound(files.begin(), files.end(), file);
        if (next != files.end() && *next == file) { // links lead there again
            release(at->first.first);
            continue;
        }
        files.insert(next, file);
        found.push_back(at);
    }
    return reason;
}

void FolderWatches::forget(File file)
{
    const auto found = placesOf.find(file);
    if (found == placesOf.end())
        return;
    const Places places = std::move(found->second);
    placesOf.erase(found);
    for (const FilesAt::iterator place : places) {
        const int watch = place->first.first;
        std::vector<File>& files = place->second;
        const auto [begin, end] = std::equal_range(files.begin(), files.end(), file);
        files.erase(begin, end);
        if (files.empty())
            filesAt.erase(place);
        release(watch);
    }
}

void FolderWatches::release(int watch)
{
    const auto use = uses.find(watch);
    if (use == uses.end() || --use->second > 0)
        return;
    uses.erase(use);
    ::inotify_rm_watch(notifier, watch);
    known.clear(); // the number may be given to another folder
}

std::map<FolderWatches::File, bool> FolderWatches::takeNews()
{
    std::map<File, bool> concerned;
    alignas(inotify_event) std::array<char, 16384> buffer;
    constexpr int most = 64; // where a program writes without pause, more comes all the time
    for (int part = 0; part < most; ++part) {
        const ssize_t size = ::read(notifier, buffer.data(), buffer.size());
        if (size <= 0)
            break;
        known.clear();
        for (std::size_t at = 0; at < static_cast<std::size_t>(size);) {
            inotify_event event = {};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            const char* const name = buffer.data() + at + sizeof event;
            const bool isBeingWritten = (event.mask & IN_MODIFY) != 0; // until it is closed
            const auto note = [&concerned, isBeingWritten](const std::vector<File>& files) {
                for (const File file : files)
                    concerned[file] = isBeingWritten;
            };
            const auto present = filesAt.find(Place(event.wd, event.len > 0 ? name : ""));
            if (present != filesAt.end())
                note(present->second);
            const bool isOfFolder = (event.mask & (IN_IGNORED | IN_DELETE_SELF | IN_MOVE_SELF)) != 0;
            const bool isLost = (event.mask & IN_Q_OVERFLOW) != 0;
            for (const auto& [place, files] : filesAt) {
                if (isLost || (isOfFolder && place.first == event.wd))
                    note(files);
            }
            at += sizeof event + event.len;
        }
    }
    return concerned;
}

} // namespace Files
