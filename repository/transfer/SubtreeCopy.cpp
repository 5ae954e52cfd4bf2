#include "repository/transfer/SubtreeCopy.h"

#include "repository/common/PathRules.h"
#include "repository/store/Refusals.h"
#include "repository/transaction/SubtreeRemoval.h"
#include "repository/transfer/PartWriter.h"
#include "repository/transfer/SubtreeReader.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

SubtreeCopy::SubtreeCopy(Transaction& current, QString fromPath, QString toPath)
    : transaction(current), from(std::move(fromPath)), to(std::move(toPath))
{
}

Outcome SubtreeCopy::check(const Node* source, bool isMove) const
{
    if (!source)
        return Refusals::notFound().of(Outcome::Operation::Change, from);
    if (!isValidPath(to))
        return Refusals::invalidPath(to);
    if (isAtOrBelow(to, from))
        return {StatusCode::InvalidPath, QStringLiteral("a subtree cannot be put into itself")};
    if (transaction.getNodes().find(to))
        return Outcome(StatusCode::AlreadyExists, QStringLiteral("it exists already"))
            .advise(QStringLiteral("choose another name"));
    if (isMove && isAtOrBelow(from, ownRoot))
        return Refusals::ownTree().of(Outcome::Operation::Change, from);
    return {};
}

Outcome SubtreeCopy::run(bool isMove, TransferReport& report)
{
    const NodeWriter& nodes = transaction.getNodes();
    Node* const source = nodes.find(from);
    Outcome outcome = check(source, isMove);
    if (!outcome.ok())
        return outcome;
    const SubtreeReader reader(nodes.getTree(), *source);
    outcome = reader.check(isMove);
    PartWriter writer(transaction, to, report, reader.getParts().size());
    for (const SubtreePart& part : reader.getParts())
        outcome = outcome.ok() ? writer.add(joinedPath(to, part.path()), part) : outcome;
    if (outcome.ok())
        outcome = writer.writeDocuments();
    SubtreeRemoval removal(transaction, *source);
    if (outcome.ok() && isMove)
        outcome = removal.removeFromBackend().of(Outcome::Operation::Change, from);
    if (!outcome.ok())
        return outcome;
    writer.finish();
    if (isMove)
        removal.removeFromTree();
    return outcome;
}

} // namespace Repository
