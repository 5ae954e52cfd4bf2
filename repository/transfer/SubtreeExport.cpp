#include "repository/transfer/SubtreeExport.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/backends/Backend.h"
#include "repository/common/PathRules.h"
#include "repository/documents/Formats.h"
#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/EncodedNames.h"
#include "repository/store/BackendLookup.h"
#include "repository/store/Refusals.h"
#include "repository/transfer/SubtreeReader.h"

#include <algorithm>

namespace Repository {

using Documents::Document;
using Documents::Entry;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;
using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

Documents::Outcome insert(Document& document, const std::string& place, const Value& value)
{
    Documents::Outcome outcome = document.insert(place, value);
    if (!outcome.ok() && !place.empty() &&
        document.insert(Documents::EncodedNames::asPlainKeys(place), value).ok())
        outcome = {};
    return outcome;
}

} // namespace

SubtreeExport::SubtreeExport(AttributeTree& attributes, QString rootPath, const QString& textType)
    : tree(attributes), path(std::move(rootPath)), type(textType), name(nameOf(path).toStdString()),
      format(Documents::findFormat(type.toStdString()))
{
}

Outcome SubtreeExport::run(QByteArray& text, TransferReport& report) const
{
    if (!format)
        return Refusals::noType(type);
    std::vector<SubtreePart> parts;
    {
        const std::shared_lock lock(tree.structure);
        const Node* const root = tree.nodeOf(path);
        if (!root)
            return Refusals::notFound();
        SubtreeReader reader(tree, *root);
        const Outcome outcome = reader.check(false);
        if (!outcome.ok())
            return outcome;
        reader.addDeclarations(*format);
        parts = reader.takeParts();
    }
    const auto sources = backendsTouching(tree, path);
    if (std::any_of(sources.begin(), sources.end(), [](const auto& source) { return source->isPrivate(); }))
        report.setPrivate();
    return write(std::move(parts), text, report);
}

Outcome SubtreeExport::write(std::vector<SubtreePart> parts, QByteArray& text, TransferReport& report) const
{
    TransferProgress progress(report, 2 * parts.size());
    std::vector<Entry> entries;
    entries.reserve(parts.size());
    for (const SubtreePart& part : parts) {
        if (!progress.advance())
            return TransferProgress::cancelled();
        entries.push_back(
            {pathBytes(part.path()), part.isGroup ? Value() : FrameworkCore::Values::toValue(part.value)});
    }
    std::vector<SubtreePart>().swap(parts); // a great subtree is not held twice
    if (const auto whole = format->writeWhole(entries)) {
        text = QByteArray::fromStdString(*whole);
        return {};
    }
    const auto document = format->makeDocument();
    Outcome outcome = fill(*document, entries, progress);
    if (outcome.ok())
        text = QByteArray::fromStdString(document->getBytes());
    return outcome;
}

Outcome SubtreeExport::fill(Document& document, const std::vector<Entry>& entries,
                            TransferProgress& progress) const
{
    std::string prefix = format->rootOf(entries, name);
    document.beginRun();
    for (const Entry& entry : entries) {
        if (!progress.advance())
            return TransferProgress::cancelled();
        const std::string place = prefix.empty() || entry.path.empty()
                                      ? prefix + entry.path
                                      : Documents::joinPath(prefix, entry.path);
        Documents::Outcome inserted = insert(document, place, entry.value);
        const bool isGroup = entry.value.type == Type::Group;
        if (!inserted.ok() && place.empty() && !isGroup) {
            prefix = name;
            inserted = insert(document, prefix, entry.value);
        }
        if (!inserted.ok() && !isGroup)
            return refusal(entry.path, inserted.error);
    }
    std::string refused;
    const Documents::Outcome ended = document.endRun(refused);
    refused.erase(0, prefix.empty() ? 0 : prefix.size() + 1);
    return ended.ok() ? Outcome() : refusal(refused, ended.error);
}

Outcome SubtreeExport::refusal(const std::string& place, const std::string& error) const
{
    return Outcome(StatusCode::BackendFailure, QString::fromStdString(error))
        .of(Outcome::Operation::Change, joinedPath(path, place));
}

} // namespace Repository
