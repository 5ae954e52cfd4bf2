#include "files/FileLocation.h"

#include <cerrno>

namespace Files {

namespace {

FileLocation split(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return {".", path, 0};
    return {slash == 0 ? "/" : path.substr(0, slash), path.substr(slash + 1), 0};
}

} // namespace

FileLocation FileLocation::find(SystemCalls& calls, std::string path)
{
    constexpr int mostLinks = 40;
    for (int links = 0; links < mostLinks; ++links) {
        std::string found;
        if (calls.resolve(path, found) == 0)
            return found == "/" ? FileLocation{found, ".", 0} : split(found);
        const int error = errno;
        FileLocation location = split(path);
        std::string target;
        if (error == ENOENT && calls.readLink(path, target) == 0) {
            path = target.substr(0, 1) == "/" ? target : location.folder + '/' + target;
            continue;
        }
        if (error == ENOENT && !location.name.empty() && calls.resolve(location.folder, found) == 0)
            return {found, location.name, 0};
        return {{}, {}, error == ENOENT ? errno : error};
    }
    return {{}, {}, ELOOP};
}

} // namespace Files
