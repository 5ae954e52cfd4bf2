#pragma once

#include "repository/merge/DocumentChanges.h"

#include <vector>

namespace Repository {

// Of changes that lead from one document to another, makes those in the target which only give an entry
// another name or place, as its text there tells: what else is written in the entry goes along. Gives the
// paths of the entries that have come so; all others are left to the caller.
PathSet followMoves(const std::vector<DocumentChange>& changes, const Documents::Document& before,
                    const Documents::Document& after, Documents::Document& target);

} // namespace Repository
