#pragma once

#include "repository/merge/DocumentChanges.h"

#include <memory>
#include <string>
#include <vector>

namespace Repository {

// What came of a merge.
struct MergedDocument
{
    // Theirs with my changes; null, with the reason, when one of mine has no place in it.
    std::unique_ptr<Documents::Document> document;
    std::string refusal;

    // Paths that both sides changed, each in its own way. The document holds mine there.
    std::vector<std::string> conflicts;

    // What theirs held before wherever a side had changed something, and so at the conflicts.
    EntryMap theirs;
};

// Brings together what two sides made of one document of the type: all of theirs, byte for byte, and in it
// what leads from the base to mine. Without Qt, so that it can be tried on texts alone.
//
// The members of an array and siblings of one name have numbers for paths. Where one side gave them other
// numbers, the same path means another member to each side: what both changed there is a conflict, too.
MergedDocument mergeDocuments(const Documents::Document& base, const Documents::Document& mine,
                              std::unique_ptr<Documents::Document> theirs);

} // namespace Repository
