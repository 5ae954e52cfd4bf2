#pragma once

#include "repository/documents/common/Document.h"
#include "repository/transfer/TransferProgress.h"

#include <memory>
#include <string>
#include <vector>

namespace Repository {

// Makes the text of a file of its own out of the entries of a subtree. One thread.
class ExportText
{
public:
    enum class End { Written, Refused, Cancelled };

    // The type is one of the document types. The name is that of the subtree's root, for files that have no
    // place for a value of the whole.
    ExportText(std::string type, std::string name);

    // The entries are in the order of the tree, their paths relative to its root.
    End write(std::vector<Documents::Entry> entries, TransferProgress& progress);

    const std::string& getText() const { return text; }

    // After a refusal.
    const std::string& getRefusedPath() const { return refusedPath; }
    const std::string& getError() const { return error; }

private:
    End fill(Documents::Document& document, std::string prefix, const std::vector<Documents::Entry>& entries,
             TransferProgress& progress);
    static Documents::Outcome insert(Documents::Document& document, const std::string& path,
                                     const FrameworkCore::Values::Value& value);

    const std::string type;
    const std::string rootName;
    std::string text;
    std::string refusedPath;
    std::string error;
};

} // namespace Repository
