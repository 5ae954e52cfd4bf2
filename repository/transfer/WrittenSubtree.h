#pragma once

#include "repository/documents/common/Document.h"

#include <QString>

#include <optional>
#include <string>
#include <vector>

namespace Repository {

class Backend;

// A subtree as its author wrote it, to become a file of its own in the same format. One thread.
class WrittenSubtree
{
public:
    // The backend holds all of the subtree, whose entries have relative paths. While the structure lock is
    // held.
    WrittenSubtree(const Backend& writer, const QString& path, std::string name,
                   const std::vector<Documents::Entry>& entries);

    // The text of a file that is read as one of the type; nothing where the entries must be written anew.
    std::optional<std::string> textOf(const std::string& type) const;

private:
    // What a file may hold of it.
    struct Candidate
    {
        std::string root;  // where the subtree's root is then
        std::string place; // of the excerpt
        Documents::Excerpt excerpt;
    };

    void addCandidates(const Backend& writer, const QString& path);
    std::optional<std::string> textWith(const Candidate& candidate) const;

    const std::string writtenType;
    const std::string name; // that of the root, for files that have no place for its value
    const std::vector<Documents::Entry>& entries;
    std::optional<std::string> whole; // of a subtree that is a file already
    std::vector<Candidate> candidates;
};

} // namespace Repository
