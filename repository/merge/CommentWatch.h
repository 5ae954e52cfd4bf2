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

// How often each line of a comment is in a document that was not edited since it was parsed, or in some
// lines; without tags.
using CommentCounts = std::unordered_map<std::string, int>;
CommentCounts countComments(const Documents::Document& document);
CommentCounts countLines(std::string_view comments);
int countIn(const CommentCounts& counts, const std::string& line);

// The comments of all sides of a merge, whatever they are at.
class CommentBalance
{
public:
    // All of documents that were not edited since they were parsed.
    CommentBalance(const Documents::Document& base, const Documents::Document& mine,
                   const Documents::Document& theirs);

    // A line of a comment of either side that a merged document lacks, though nobody took it out; empty for
    // none.
    std::string findLost(const Documents::Document& merged) const;

private:
    const CommentCounts before;
    const CommentCounts here;
    const CommentCounts there;
};

} // namespace Repository
