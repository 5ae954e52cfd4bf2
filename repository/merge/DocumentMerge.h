#pragma once

#include "repository/merge/DocumentChanges.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace Repository {

// What came of a merge.
struct MergedDocument
{
    // Theirs with my changes; null, with the reason, when one of mine has no place in it.
    std::unique_ptr<Documents::Document> document;
    std::string refusal;

    // Paths that both sides changed, each in its own way. The document holds mine there. Without a document
    // they are those of mine.
    std::vector<std::string> conflicts;

    // What the base and theirs held wherever a side had changed something, and so at the conflicts.
    EntryMap bases;
    EntryMap theirs;

    // Of the watched paths those that are others in the document, since elements came or went before them.
    std::unordered_map<std::string, std::string> renumbered;
};

// Brings together what two sides made of one document of the type: all of theirs, byte for byte, and in it
// what leads from the base to mine. Without Qt, so that it can be tried on texts alone. Theirs has at the
// watched paths of mine what is asked for.
//
// The elements of an array are identified by their content: they are edited where they are now, and removed,
// added and moved beside those that they were beside. Where one side has taken out what the other has
// changed, or both have ordered an array anew, all of it is in conflict. Siblings of one name have numbers
// for paths; where one side gave them other numbers, what both changed there is a conflict, too.
MergedDocument mergeDocuments(const std::string& type, const Documents::Document& base,
                              const Documents::Document& mine, std::unique_ptr<Documents::Document> theirs,
                              const PathSet& watched);

} // namespace Repository
