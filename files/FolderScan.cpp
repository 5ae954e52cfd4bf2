#include "files/FolderScan.h"

#include "files/Reason.h"

#include <algorithm>
#include <filesystem>
#include <fnmatch.h>
#include <system_error>

namespace Files {

namespace {

namespace fs = std::filesystem;

// In the order of the names; empty, with the error, where it cannot be read.
std::vector<fs::directory_entry> entriesOf(const std::string& folder, std::error_code& error)
{
    std::vector<fs::directory_entry> entries;
    for (fs::directory_iterator each(folder, error), end; !error && each != end; each.increment(error))
        entries.push_back(*each);
    std::sort(entries.begin(), entries.end());
    return entries;
}

bool matchesOne(const std::vector<std::string>& patterns, const std::string& path)
{
    const std::string name = path.substr(path.rfind('/') + 1);
    return std::any_of(patterns.begin(), patterns.end(), [&](const std::string& pattern) {
        const bool isOfPath = pattern.find('/') != std::string::npos;
        return fnmatch(pattern.c_str(), isOfPath ? path.c_str() : name.c_str(), 0) == 0;
    });
}

// Scans a folder and those below it.
class Scanner
{
public:
    Scanner(std::string topFolder, const FolderFilter& wanted) : top(std::move(topFolder)), filter(wanted) {}

    void scan(const std::string& folder, int depth)
    {
        if (depth > FolderFilter::mostLevels) {
            found.refusals.push_back(
                {folder, Reason::tr("it lies more than %1 folders below the one that was opened",
                                    {std::to_string(FolderFilter::mostLevels)})});
            return;
        }
        found.folders.push_back(folder);
        std::error_code error;
        const std::vector<fs::directory_entry> entries = entriesOf(folder, error);
        if (error)
            found.refusals.push_back({folder, error.message()});
        for (const fs::directory_entry& entry : entries)
            take(entry, depth);
    }

    FolderScan found;

private:
    void take(const fs::directory_entry& entry, int depth)
    {
        std::error_code gone; // meanwhile
        const bool isLink = entry.is_symlink(gone);
        const std::string path = entry.path().string();
        const std::string below = path.substr(std::min(path.size(), top.size() + 1));
        if (isLink)
            return;
        if (entry.is_regular_file(gone) && filter.takesFile(below) && isSmallEnough(entry))
            found.files.push_back(path);
        else if (entry.is_directory(gone) && isWithin(depth) && filter.takesFolder(below))
            scan(path, depth + 1);
    }

    bool isSmallEnough(const fs::directory_entry& entry) const
    {
        std::error_code gone;
        return filter.largest == FolderFilter::anySize || entry.file_size(gone) <= filter.largest;
    }

    // What lies deeper than may be at all is refused, not left out.
    bool isWithin(int depth) const
    {
        return depth < filter.deepest || filter.deepest == FolderFilter::mostLevels;
    }

    const std::string top;
    const FolderFilter& filter; // outlives this
};

} // namespace

bool FolderFilter::takesFile(const std::string& path) const
{
    return (include.empty() || matchesOne(include, path)) && !matchesOne(exclude, path);
}

bool FolderFilter::takesFolder(const std::string& path) const
{
    return !matchesOne(exclude, path);
}

FolderScan FolderScan::of(const std::string& folder, const FolderFilter& filter)
{
    Scanner scanner(folder, filter);
    scanner.scan(folder, 0);
    return std::move(scanner.found);
}

} // namespace Files
