#include "repository/transfer/PartWriter.h"

#include "repository/store/Refusals.h"
#include "repository/transfer/SubtreeReader.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;

PartWriter::PartWriter(Transaction& transaction, const QString& root,
                       TransferProgress::TransferReport& report, std::size_t count)
    : tree(transaction.getNodes().getTree()), bulk(transaction, root), progress(report, count)
{
    bulk.expect(count);
}

Outcome PartWriter::add(const QString& path, const SubtreePart& part)
{
    if (!progress.advance())
        return TransferProgress::cancelled();
    if (part.isGroup)
        return bulk.addGroup(path).of(Outcome::Operation::Change, path);
    Outcome outcome = bulk.addAttribute(path, part.value, part.access, part.inFile);
    return outcome.ok() ? outcome
                        : Refusals::notSet(std::move(outcome), path, part.value, tree.hidesValues(path));
}

} // namespace Repository
