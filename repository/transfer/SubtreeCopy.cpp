#include "repository/transfer/SubtreeCopy.h"

#include "repository/common/PathRules.h"
#include "repository/common/Texts.h"
#include "repository/store/Refusals.h"
#include "repository/transaction/SubtreeRemoval.h"
#include "repository/transfer/ElementCopy.h"
#include "repository/transfer/PartWriter.h"
#include "repository/transfer/SubtreeReader.h"

#include <algorithm>

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

namespace {

// Those in an entry, and of those around it the ones that go with it.
std::vector<Documents::CarriedComment> commentsOf(const Backend& backend, const QString& path)
{
    auto comments =
        Documents::commentsBelow(pathBytes(pathAfter(path, backend.getName().size())), backend.getComments());
    const auto excerpt = backend.excerpt(path);
    const std::string around = excerpt ? excerpt->above + excerpt->after + excerpt->text : std::string();
    const auto isAround = [&](const std::string& line) { return around.find(line) != std::string::npos; };
    const auto staysBehind = [&](const Documents::CarriedComment& comment) {
        const bool isApart =
            excerpt ? !std::all_of(comment.lines.begin(), comment.lines.end(), isAround) : comment.isApart;
        return comment.path.empty() && !comment.isAtEnd && isApart;
    };
    comments.erase(std::remove_if(comments.begin(), comments.end(), staysBehind), comments.end());
    return comments;
}

} // namespace

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
        return {StatusCode::InvalidPath, Texts::tr("a subtree cannot be put into itself")};
    if (transaction.getNodes().find(to))
        return Outcome(StatusCode::AlreadyExists, Texts::tr("it exists already"))
            .advise(Texts::tr("choose another name"));
    if (source->backend && source->backend->originOf(from) == Backend::Origin::Reference)
        return Outcome(StatusCode::BackendFailure, Texts::tr("it only names what is merged into its group"))
            .advise(Texts::tr("copy the entries that it brings there"))
            .of(Outcome::Operation::Change, from);
    if (isMove && isAtOrBelow(from, ownRoot))
        return Refusals::ownTree().of(Outcome::Operation::Change, from);
    return {};
}

// Whether what a backend has written may be written at the new place, too.
bool SubtreeCopy::isOfOneFormat(const Backend* writer) const
{
    const Backend* const target = transaction.getNodes().nearest(to).backend;
    return writer && target && writer->getDescription().type == target->getDescription().type;
}

Outcome SubtreeCopy::run(bool isMove, TransferReport& report)
{
    if (ElementCopy elements(transaction, from, to); elements.isNeeded(isMove))
        return elements.run(isMove, report);
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
    SubtreeRemoval removal(transaction, *source);
    if (outcome.ok())
        outcome = changeDocuments(writer, removal, *source, isMove, reader.getWriter(), report);
    if (!outcome.ok())
        return outcome;
    writer.finish();
    if (isMove)
        removal.removeFromTree();
    return outcome;
}

// The name alone is changed where that will do, else the text is taken along, or else the values and the
// comments that have a place there.
Outcome SubtreeCopy::changeDocuments(PartWriter& writer, SubtreeRemoval& removal, const Node& source,
                                     bool isMove, const Backend* author, TransferReport& report)
{
    const bool keepsText = isOfOneFormat(author);
    const auto ofSource = [this](Outcome outcome) { return outcome.of(Outcome::Operation::Change, from); };
    Outcome outcome = isMove ? ofSource(removal.check()) : Outcome();
    if (!outcome.ok())
        return outcome;
    if (isMove && keepsText && parentPath(from) == parentPath(to)) {
        if (const auto renamed = writer.renameInDocument(from))
            return renamed->ok() ? *renamed : Outcome(*renamed).of(Outcome::Operation::Change, to);
    }
    const auto excerpt = keepsText ? source.backend->excerpt(from) : std::nullopt;
    bool isWritten = excerpt && writer.writeExcerpt(*excerpt);
    if (!isWritten && source.backend && source.backend->countTags(from) > 0) {
        if (isMove)
            return ofSource(Refusals::losesTags());
        report.setTagsLeftOut();
    }
    if (!isWritten && author) {
        const auto comments = commentsOf(*author, from);
        const auto leftOut = writer.writeCommented(comments);
        report.setCommentsLeftOut(int(leftOut.value_or(comments.size())));
        isWritten = leftOut.has_value();
    }
    const bool isCarried = isWritten && report.getCommentsLeftOut() == 0;
    if (isMove && report.getCommentsLeftOut() > 0 && source.backend && source.backend->hasComments(from))
        return ofSource(Refusals::losesComments());
    if (!isWritten)
        outcome = writer.writeDocuments();
    if (!outcome.ok() || !isMove || !source.backend)
        return outcome;
    // Comments above that have no place there stay here.
    DocumentEdit& document = transaction.edit(*source.backend);
    return ofSource(isCarried ? document.removeExcerpt(from) : document.remove(from));
}

} // namespace Repository
