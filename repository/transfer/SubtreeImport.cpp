#include "repository/transfer/SubtreeImport.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/common/PathRules.h"
#include "repository/documents/Formats.h"
#include "repository/store/Refusals.h"
#include "repository/transfer/PartWriter.h"
#include "repository/transfer/SubtreeReader.h"

#include <algorithm>

namespace Repository {

using FrameworkCore::AppConfig::AccessMode;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

namespace {

bool isBelow(const std::string& path, const std::string& group)
{
    return path.size() > group.size() && path[group.size()] == '.' &&
           path.compare(0, group.size(), group) == 0;
}

} // namespace

SubtreeImport::SubtreeImport(AttributeStore& attributes, const QString& rootPath, const QString& textType)
    : store(attributes), path(rootPath), type(textType), format(Documents::findFormat(type.toStdString()))
{
}

Outcome SubtreeImport::run(const QByteArray& text, TransferReport& report) const
{
    if (!format)
        return Refusals::noType(type);
    const std::string bytes = text.toStdString();
    auto document = Documents::makeDocument(Documents::recogniseDialect(type.toStdString(), {}, bytes));
    const Documents::Outcome parsed = document->parse(bytes);
    if (!parsed.ok())
        return {StatusCode::BackendFailure, QStringLiteral("the text is not %1: line %2, column %3: %4")
                                                .arg(type)
                                                .arg(parsed.line)
                                                .arg(parsed.column)
                                                .arg(QString::fromStdString(parsed.error))};
    if (!path.isEmpty() && !isValidPath(path))
        return Refusals::invalidPath(path);
    // Nearly always there is one entry a line, or between two commas.
    const auto expected =
        std::max(std::count(text.begin(), text.end(), '\n'), std::count(text.begin(), text.end(), ','));
    const auto stepName = [this] { return QStringLiteral("Import %1").arg(path); };
    return store.changeAll(stepName, {path}, [&](Transaction& transaction) {
        return put(std::move(document), std::size_t(expected), transaction, report);
    });
}

Outcome SubtreeImport::put(std::unique_ptr<Documents::Document> document, std::size_t expected,
                           Transaction& transaction, TransferReport& report) const
{
    // What is written at once is in the order of the tree.
    PartWriter writer(transaction, format->isInTreeOrder() ? path : QString(), report, expected);
    Outcome outcome;
    std::string group; // the one that came last, and holds nothing so far
    const auto addGroup = [&] {
        if (!group.empty())
            outcome = writer.add(joinedPath(path, group), {{}, 0, {}, AccessMode::ReadWrite, true});
        group.clear();
    };
    format->visitImport(*document, [&](const Documents::Entry& entry) {
        if (!outcome.ok())
            return;
        if (!isBelow(entry.path, group))
            addGroup();
        group.clear();
        if (entry.value.type == FrameworkCore::Values::Type::Group)
            group = entry.path;
        else if (outcome.ok())
            outcome = writer.add(
                joinedPath(path, entry.path),
                {{}, 0, FrameworkCore::Values::toVariant(entry.value), AccessMode::ReadWrite, false});
    });
    document.reset(); // a great subtree is not held twice
    if (outcome.ok())
        addGroup();
    if (outcome.ok())
        outcome = writer.writeDocuments();
    if (outcome.ok())
        writer.finish();
    return outcome;
}

} // namespace Repository
