#pragma once

#include "repository/merge/DocumentChanges.h"

#include <string>
#include <string_view>
#include <vector>

namespace Repository {

// The entries of some paths, which somebody else keeps, and all below them.
class Subtrees
{
public:
    explicit Subtrees(const std::vector<std::string>& paths) : tops(paths.begin(), paths.end())
    {
        for (const std::string& path : paths)
            forEachAncestor(path,
                            [this](std::string_view ancestor) { return !above.insert(ancestor).second; });
    }

    bool contain(const std::string& path) const
    {
        return forEachAncestor(path, [this](std::string_view ancestor) { return tops.count(ancestor) > 0; });
    }

    // Groups above count, too, since they may have come or gone with what is in them.
    bool concern(const DocumentChange& change) const
    {
        const bool isGroup = change.before.type == FrameworkCore::Values::Type::Group &&
                             change.after.type == FrameworkCore::Values::Type::Group;
        return contain(change.path) || (isGroup && above.count(change.path) > 0);
    }

private:
    const PathSet tops;
    PathSet above;
};

} // namespace Repository
