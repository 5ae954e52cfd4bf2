#pragma once

#include "repository/merge/DocumentChanges.h"

#include <string>
#include <string_view>
#include <unordered_map>
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

// How often each line of a comment is in a document that was not edited since it was parsed, without tags.
using CommentCounts = std::unordered_map<std::string, int>;
CommentCounts countComments(const Documents::Document& document);

// A line of a comment of either side that a merged document lacks, though nobody took it out; empty for none.
std::string findLostComment(const CommentCounts& base, const CommentCounts& mine, const CommentCounts& theirs,
                            const CommentCounts& merged);

} // namespace Repository
