#include "files/FolderScan.h"

#include <algorithm>
#include <filesystem>
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

void scanInto(FolderScan& scan, const std::string& folder, int depth)
{
    if (depth > FolderScan::deepest) {
        scan.refusals.push_back({folder, "it lies more than " + std::to_string(FolderScan::deepest) +
                                             " folders below the one that was opened"});
        return;
    }
    scan.folders.push_back(folder);
    std::error_code error;
    const std::vector<fs::directory_entry> entries = entriesOf(folder, error);
    if (error)
        scan.refusals.push_back({folder, error.message()});
    for (const fs::directory_entry& entry : entries) {
        std::error_code gone; // meanwhile
        const fs::file_status status = entry.symlink_status(gone);
        if (fs::is_regular_file(status))
            scan.files.push_back(entry.path().string());
        else if (fs::is_directory(status))
            scanInto(scan, entry.path().string(), depth + 1);
    }
}

} // namespace

FolderScan FolderScan::of(const std::string& folder)
{
    FolderScan scan;
    scanInto(scan, folder, 0);
    return scan;
}

} // namespace Files
