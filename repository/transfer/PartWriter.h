#pragma once

#include "repository/transaction/BulkWrite.h"
#include "repository/transfer/TransferProgress.h"

namespace Repository {

struct SubtreePart;

// Writes parts of a subtree to the tree, until its report is cancelled. One thread.
class PartWriter
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;

    // The root is that of BulkWrite; so many parts will come, about.
    PartWriter(Transaction& transaction, const QString& root, TransferProgress::TransferReport& report,
               std::size_t count);

    // In the order that BulkWrite wants. The path is that in the tree.
    Outcome add(const QString& path, const SubtreePart& part);

    // As those of BulkWrite.
    Outcome beginWhole(const QString& path, std::optional<Documents::Excerpt> excerpt = {})
    {
        return bulk.beginWhole(path, std::move(excerpt));
    }
    Outcome endWhole() { return bulk.endWhole(); }
    QString firstMissing(const QString& path) const { return bulk.firstMissing(path); }
    bool isNew() const { return bulk.isNew(); }
    bool isGroup(const QString& path) const { return bulk.isGroup(path); }
    Outcome writeDocuments() { return bulk.writeDocuments(); }
    std::optional<Outcome> renameInDocument(const QString& place) { return bulk.renameInDocument(place); }
    bool writeExcerpt(const Documents::Excerpt& excerpt) { return bulk.writeExcerpt(excerpt); }
    std::optional<std::size_t> writeCommented(const std::vector<Documents::CarriedComment>& comments)
    {
        return bulk.writeCommented(comments);
    }
    void finish() { bulk.finish(); }

private:
    AttributeTree& tree;
    BulkWrite bulk;
    TransferProgress progress;
};

} // namespace Repository
