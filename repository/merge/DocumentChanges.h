#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/common/Values.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Repository {

class EntryList;

// Paths that somebody else keeps.
using PathSet = std::unordered_set<std::string_view>;

// The entries that a document has at some paths, by them.
using EntryMap = std::unordered_map<std::string, FrameworkCore::Values::Value>;
EntryMap entriesAt(const Documents::Document& document, const PathSet& paths);

// One entry in which two documents differ.
struct DocumentChange
{
    enum class Kind { Changed, Created, Removed };

    std::string path;
    Kind kind = Kind::Changed;
    FrameworkCore::Values::Value before; // Group for a created one, too
    FrameworkCore::Values::Value after;  // Group for a removed one, too
};

// All in which two documents differ.
struct DocumentChanges
{
    std::vector<DocumentChange> entries;
    bool areMoved = false; // some that stay come in another order
};

// What leads from one document to the other by path: removed entries first, in the order of the one, then all
// others in the order of the other. Groups count as entries.
std::vector<DocumentChange> compareDocuments(const Documents::Document& before,
                                             const Documents::Document& after);
std::vector<DocumentChange> compareDocuments(const EntryList& before, const Documents::Document& after);

// The paths of changes, which must stay.
PathSet pathsOf(const std::vector<DocumentChange>& changes);

// The changes that say something to a person: without the groups that came or went with what is in them.
std::vector<DocumentChange> withoutImpliedGroups(std::vector<DocumentChange> changes);

// Visits the path itself, what it lies in, and last the empty path, until the visitor gives true. Gives
// whether it did.
template <typename Visitor>
bool forEachAncestor(std::string_view path, const Visitor& visitor)
{
    while (!visitor(path)) {
        if (path.empty())
            return false;
        const std::size_t dot = path.rfind('.');
        path = path.substr(0, dot == std::string_view::npos ? 0 : dot);
    }
    return true;
}

// True for the path itself and all below it; everything is below the empty path.
bool isWithin(std::string_view path, std::string_view ancestor);

using Documents::isSame;

// A change that a document does not take, and why.
struct RefusedChange
{
    std::string path;
    std::string reason; // empty when there was none
};

// Makes the changes in a document that holds what they lead from, or nearly so: an entry that is there
// already is set, one that is missing is inserted, a group is only taken out when nothing is left in it, and
// what was renamed or moved as it is takes along what is written in it here.
// Values are spelt as in the model, a document of the same type, where it has them. After a refusal the
// document may hold a part of the changes.
RefusedChange applyChanges(const std::vector<DocumentChange>& changes, const Documents::Document& before,
                           const Documents::Document& model, Documents::Document& target);

} // namespace Repository
