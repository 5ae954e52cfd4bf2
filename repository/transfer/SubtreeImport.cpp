#include "repository/transfer/SubtreeImport.h"

#include "repository/backends/Backend.h"
#include "repository/common/PathRules.h"
#include "repository/common/Texts.h"
#include "repository/documents/Formats.h"
#include "repository/store/BackendLookup.h"
#include "repository/store/Refusals.h"
#include "repository/transfer/TextInsertion.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

SubtreeImport::SubtreeImport(AttributeStore& attributes, const QString& rootPath, const QString& textType)
    : store(attributes), path(rootPath), type(textType), format(Documents::findFormat(type.toStdString()))
{
}

Outcome SubtreeImport::run(const QByteArray& text, TransferReport& report) const
{
    if (!format)
        return Refusals::noType(type);
    const std::string bytes = text.toStdString();
    const std::string dialect = Documents::recogniseDialect(type.toStdString(), {}, bytes);
    const auto document = Documents::makeDocument(dialect);
    const Documents::Outcome parsed = document->parse(bytes);
    if (!parsed.ok())
        return {StatusCode::BackendFailure, Texts::tr("the text is not %1: line %2, column %3: %4")
                                                .arg(type)
                                                .arg(parsed.line)
                                                .arg(parsed.column)
                                                .arg(QString::fromStdString(parsed.error))};
    if (!path.isEmpty() && !isValidPath(path))
        return Refusals::invalidPath(path);
    const auto stepName = [this] { return Texts::tr("Import %1").arg(readablePath(*store.getTree(), path)); };
    const TextInsertion::Comments comments = Documents::commentsOf(document->getMarks());
    const auto target = backendOf(*store.getTree(), path);
    const auto countTags = [&] { return target ? target->countTags(path) : 0; };
    const std::size_t tags = document->countTags({}) + countTags();
    const TextInsertion::Comments former = target ? target->getComments() : TextInsertion::Comments();
    const Outcome outcome = store.changeAll(stepName, {path}, [&](Transaction& transaction) {
        return TextInsertion(*Documents::findFormat(dialect), *document, bytes.size(), comments, path)
            .run(transaction, report);
    });
    if (outcome.ok() && !(comments.empty() && former.empty())) {
        // Also those of an array that was replaced.
        const TextInsertion::Comments now = target ? target->getComments() : TextInsertion::Comments();
        report.setCommentsLeftOut(
            int(Documents::countMissing(comments, former, now) + Documents::countMissing(former, {}, now)));
    }
    if (outcome.ok() && countTags() < tags)
        report.setTagsLeftOut();
    return outcome;
}

} // namespace Repository
