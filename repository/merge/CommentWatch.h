#pragma once

#include "repository/merge/DocumentChanges.h"

#include <string>
#include <string_view>
#include <vector>

namespace Repository {

// Comments that one side of a merge has written and the other knows nothing of, by the entries they are at.
// Tells which of them the merged text lacks. Looks at no more entries than can be read in a short time.
class CommentWatch
{
public:
    // Those of entries that the changes add.
    void watchAdded(const std::vector<DocumentChange>& changes, const Documents::Document& after);

    // Those that are new or others since the base in entries that the changes take out, or in lists that they
    // change, where nothing else is new: the paths in which there is more are given.
    void watchRemoved(const std::vector<DocumentChange>& changes, const Documents::Document& base,
                      const Documents::Document& theirs, const PathSet& others);

    std::vector<std::string> findLost(const std::string& text) const;

private:
    struct Watched
    {
        std::string path;
        std::vector<std::string> lines; // without what indents them
        std::string tail;               // part of a line
    };

    std::vector<Watched> all;
};

} // namespace Repository
