#pragma once

#include "repository/merge/DocumentChanges.h"
#include "repository/merge/EntryList.h"

#include <utility>
#include <vector>

namespace Repository {

// Finds in what another document differs from some entries. It walks along both, since most entries of a file
// that was edited are in the order that they had; only those for which this fails are looked up by their
// paths. For one comparison.
class DocumentComparison
{
public:
    explicit DocumentComparison(const EntryList& entries) : before(entries) {}

    // The changes in the order that compareDocuments promises.
    DocumentChanges run(const Documents::Document& after);

private:
    void take(const Documents::Entry& entry);
    std::size_t find(const std::string& path);
    void compareAt(std::size_t position, std::size_t place, const Documents::Entry& entry);
    DocumentChanges settle();

    const EntryList& before;
    std::size_t expected = 0;        // the entry of before that should come next
    std::size_t misses = 0;          // so many in a row were not found near that
    std::size_t place = 0;           // of the next entry in after
    std::vector<std::size_t> passed; // entries of before that did not come when they were expected
    std::vector<std::pair<std::size_t, Documents::Entry>> strangers; // what came instead, by place
    std::vector<std::pair<std::size_t, DocumentChange>> changes;     // Changed and Created, by place
};

} // namespace Repository
