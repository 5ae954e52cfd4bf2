#include "repository/SubtreeTransfer.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/AttributeStore.h"
#include "repository/Backend.h"
#include "repository/BackendLookup.h"
#include "repository/BulkWrite.h"
#include "repository/EncodedNames.h"
#include "repository/ExportText.h"
#include "repository/MemoryGuard.h"
#include "repository/PathRules.h"
#include "repository/RefusalText.h"
#include "repository/RepositoryLog.h"
#include "repository/documents/Formats.h"

namespace Repository {

using FrameworkCore::AppConfig::AccessMode;
using FrameworkCore::AppConfig::StatusCode;
using FrameworkCore::AppConfig::Interfaces::TransferReport;
using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

const QString jsonType = QStringLiteral("json");
const QString xmlType = QStringLiteral("xml");

// True when a component of the path is the name of an element or attribute with that prefix.
bool usesPrefix(QStringView path, QStringView prefix)
{
    for (qsizetype at = path.indexOf(prefix); at >= 0; at = path.indexOf(prefix, at + 1)) {
        const QChar before = at > 0 ? path[at - 1] : pathSeparator;
        if (before == pathSeparator || before == QLatin1Char('@'))
            return true;
    }
    return false;
}

QString joined(const QString& root, QStringView below)
{
    if (below.isEmpty())
        return root;
    QString path;
    path.reserve(root.size() + 1 + int(below.size()));
    path += root;
    if (!root.isEmpty())
        path += pathSeparator;
    return path.append(below.data(), int(below.size()));
}

QString noType(const QString& type)
{
    QStringList known;
    for (const std::string& name : Documents::getDocumentTypes())
        known.append(QString::fromStdString(name));
    return QStringLiteral("there is no backend type '%1'; known are: %2")
        .arg(type, known.join(QStringLiteral(", ")));
}

bool isBelow(const std::string& path, const std::string& group)
{
    return path.size() > group.size() && path[group.size()] == '.' &&
           path.compare(0, group.size(), group) == 0;
}

bool isEmptyGroup(const Node& node)
{
    return !node.isAttribute() && (!node.children || node.children->count == 0);
}

// What a copy of the attribute may be used for, before its destination limits that. What only the backend of
// the original forbids is allowed to the copy.
AccessMode accessOfCopy(const Node& node)
{
    const AccessMode most = node.backend ? node.backend->getAccessMode() : AccessMode::ReadWrite;
    return node.getAccess() == most || isAtOrBelow(node.path, ownRoot) ? AccessMode::ReadWrite
                                                                       : node.getAccess();
}

} // namespace

SubtreeTransfer::SubtreeTransfer(std::shared_ptr<AttributeStore> attributes) : store(std::move(attributes))
{
}

StatusCode SubtreeTransfer::finish(const Refusal& refusal, TransferReport& report)
{
    if (refusal.status == StatusCode::Success)
        return refusal.status;
    if (refusal.status == StatusCode::Cancelled) {
        report.setReason(QStringLiteral("it was cancelled"));
        return refusal.status;
    }
    const QString line = refusal.value
                             ? RefusalText::ofValue(refusal.path, *refusal.value, false, refusal.reason)
                             : AttributeStore::refusalText(refusal.path, refusal.reason);
    if (report.getReason().isEmpty())
        report.setReason(line);
    logFailure(line);
    return refusal.status;
}

auto SubtreeTransfer::noMemoryAt(const QString& path)
{
    return [path](const QString& reason) { return Refusal{StatusCode::NotEnoughMemory, path, reason}; };
}

SubtreeTransfer::Refusal SubtreeTransfer::add(BulkWrite& bulk, const QString& path, const Part& part) const
{
    Refusal refusal;
    refusal.path = path;
    refusal.status = part.isGroup ? bulk.addGroup(path, refusal.reason)
                                  : bulk.addAttribute(path, part.value, part.access, refusal.reason);
    if (refusal.status != StatusCode::Success && !part.isGroup && !store->hidesValues(path))
        refusal.value = part.value;
    return refusal;
}

SubtreeTransfer::Refusal SubtreeTransfer::writeDocuments(BulkWrite& bulk) const
{
    Refusal refusal;
    refusal.status = bulk.writeDocuments(refusal.path, refusal.value, refusal.reason);
    if (refusal.value && store->hidesValues(refusal.path))
        refusal.value.reset();
    return refusal;
}

void SubtreeTransfer::addPart(const Node& node, int rootLength, std::vector<Part>& parts,
                              QString& hidden) const
{
    if (isEmptyGroup(node)) {
        parts.push_back({node.path, rootLength, {}, AccessMode::ReadWrite, true});
        return;
    }
    const std::lock_guard shardLock(store->index.shardOf(NodeIndex::Key(node.path)).mutex);
    if (!node.isAttribute())
        return;
    if (node.isReadable())
        parts.push_back({node.path, rootLength, node.value, accessOfCopy(node), false});
    else if (hidden.isEmpty())
        hidden = node.path;
}

std::vector<SubtreeTransfer::Part> SubtreeTransfer::collect(const Node& root, QString& hidden) const
{
    std::vector<Part> parts;
    const int rootLength = root.path.size();
    std::vector<const Node*> walk{&root};
    while (!walk.empty()) {
        const Node* node = walk.back();
        walk.pop_back();
        if (node->path == ownRoot && root.path.isEmpty())
            continue;
        if (node->parent)
            addPart(*node, rootLength, parts, hidden);
        if (!node->children)
            continue;
        const std::vector<Node*>& places = node->children->places;
        for (auto child = places.rbegin(); child != places.rend(); ++child) {
            if (*child)
                walk.push_back(*child);
        }
    }
    return parts;
}

// A file of its own also needs the prefixes that elements around the subtree declare.
void SubtreeTransfer::addDeclarations(const Node& root, std::vector<Part>& parts) const
{
    static const QString declaration = QStringLiteral("@xmlns:");
    const qsizetype nameStart = root.path.size() - root.getName().size();
    QString hidden;
    for (const Node* around = root.parent; around && around->children; around = around->parent) {
        for (const Node* node : around->children->places) {
            if (!node || !node->getName().startsWith(declaration))
                continue;
            const QString own = joined(root.path, node->getName());
            const QString prefix = own.mid(root.path.size() + 1 + declaration.size()) + QLatin1Char(':');
            const auto isOwn = [&](const Part& part) { return part.fullPath == own; };
            const auto usesIt = [&](const Part& part) {
                return usesPrefix(QStringView(part.fullPath).mid(nameStart), prefix);
            };
            if (std::any_of(parts.begin(), parts.end(), usesIt) &&
                std::none_of(parts.begin(), parts.end(), isOwn)) {
                addPart(*node, root.path.size(), parts, hidden);
                parts.back().fullPath = own;
            }
        }
    }
}

SubtreeTransfer::Refusal SubtreeTransfer::checkReadable(const std::vector<Part>& parts, const QString& hidden)
{
    if (hidden.isEmpty() || !parts.empty())
        return {};
    return {StatusCode::NotReadable, hidden,
            QStringLiteral("it is write-only, and its value is not taken elsewhere")};
}

StatusCode SubtreeTransfer::copyTree(const QString& from, const QString& to)
{
    TransferReport report;
    return copyTree(from, to, report);
}

StatusCode SubtreeTransfer::copyTree(const QString& from, const QString& to, TransferReport& report)
{
    const auto operation = [&] {
        const History::Scope step(store->getHistory(),
                                  [&] { return QStringLiteral("Copy %1 to %2").arg(from, to); });
        TreeEdit edit(*store, {from, to}, step.getRecorder());
        return transfer(edit, from, to, false, report);
    };
    return finish(guardMemory(operation, noMemoryAt(to)), report);
}

StatusCode SubtreeTransfer::moveTree(const QString& from, const QString& to)
{
    TransferReport report;
    const auto operation = [&] {
        const History::Scope step(store->getHistory(),
                                  [&] { return QStringLiteral("Move %1 to %2").arg(from, to); });
        TreeEdit edit(*store, {from, to}, step.getRecorder());
        return transfer(edit, from, to, true, report);
    };
    return finish(guardMemory(operation, noMemoryAt(to)), report);
}

SubtreeTransfer::Refusal SubtreeTransfer::transfer(TreeEdit& edit, const QString& from, const QString& to,
                                                   bool isMove, TransferReport& report)
{
    Node* source = edit.find(from);
    if (!source)
        return {StatusCode::NotFound, from, RefusalText::notFound()};
    if (!isValidPath(to) || isAtOrBelow(to, from))
        return {StatusCode::InvalidPath, to,
                isValidPath(to) ? QStringLiteral("'%1' cannot be put into itself").arg(from)
                                : RefusalText::invalidPath(to)};
    if (edit.find(to))
        return {StatusCode::AlreadyExists, to, QStringLiteral("it exists already; choose another name")};
    if (isMove && isAtOrBelow(from, ownRoot))
        return {StatusCode::NotWritable, from, RefusalText::ownTree()};
    QString hidden;
    const std::vector<Part> parts = collect(*source, hidden);
    Refusal refusal = checkReadable(isMove ? std::vector<Part>() : parts, hidden);
    if (refusal.status != StatusCode::Success)
        return refusal;

    BulkWrite bulk(edit, to);
    bulk.expect(parts.size());
    TransferProgress progress(report, parts.size());
    for (const Part& part : parts) {
        refusal = add(bulk, joined(to, part.path()), part);
        if (refusal.status == StatusCode::Success && !progress.advance())
            refusal.status = StatusCode::Cancelled;
        if (refusal.status != StatusCode::Success)
            return refusal;
    }
    if (isMove)
        bulk.prepareTakingBack();
    refusal = writeDocuments(bulk);
    if (refusal.status != StatusCode::Success)
        return refusal;
    bool othersMove = false;
    if (isMove) {
        refusal.path = from;
        refusal.status = edit.removeFromDocument(*source, othersMove, refusal.reason);
        if (refusal.status != StatusCode::Success)
            return refusal;
    }
    bulk.finish();
    if (isMove)
        edit.removeFromTree(*source, othersMove);
    return refusal;
}

StatusCode SubtreeTransfer::exportTree(const QString& path, const QString& type, QByteArray& text)
{
    TransferReport report;
    return exportTree(path, type, text, report);
}

StatusCode SubtreeTransfer::exportTree(const QString& path, const QString& type, QByteArray& text,
                                       TransferReport& report)
{
    if (!Documents::makeDocument(type.toStdString()))
        return finish({StatusCode::BackendFailure, path, noType(type)}, report);
    const auto operation = [&] { return writeTree(path, type, text, report); };
    return finish(guardMemory(operation, noMemoryAt(path)), report);
}

SubtreeTransfer::Refusal SubtreeTransfer::writeTree(const QString& path, const QString& type,
                                                    QByteArray& text, TransferReport& report)
{
    Refusal refusal{StatusCode::NotFound, path, RefusalText::notFound()};
    std::vector<Part> parts;
    {
        const std::shared_lock lock(store->structure);
        QString hidden;
        if (const Node* root = store->nodeOf(path)) {
            parts = collect(*root, hidden);
            refusal = checkReadable(parts, hidden);
            if (type == xmlType)
                addDeclarations(*root, parts);
        }
    }
    const auto sources = backendsTouching(*store, path);
    if (std::any_of(sources.begin(), sources.end(), [](const auto& source) { return source->isPrivate(); }))
        report.setPrivate();
    return refusal.status == StatusCode::Success ? writeText(path, type, std::move(parts), text, report)
                                                 : refusal;
}

SubtreeTransfer::Refusal SubtreeTransfer::writeText(const QString& path, const QString& type,
                                                    std::vector<Part> parts, QByteArray& text,
                                                    TransferReport& report)
{
    TransferProgress progress(report, 2 * parts.size());
    std::vector<Documents::Entry> entries;
    entries.reserve(parts.size());
    for (const Part& part : parts) {
        if (!progress.advance())
            return {StatusCode::Cancelled, path, {}};
        entries.push_back(
            {pathBytes(part.path()), part.isGroup ? Value() : FrameworkCore::Values::toValue(part.value)});
    }
    std::vector<Part>().swap(parts); // a great subtree is not held twice
    ExportText exported(type.toStdString(), path.mid(path.lastIndexOf(pathSeparator) + 1).toStdString());
    switch (exported.write(std::move(entries), progress)) {
    case ExportText::End::Written:
        break;
    case ExportText::End::Refused:
        return {StatusCode::BackendFailure, joinedPath(path, exported.getRefusedPath()),
                QString::fromStdString(exported.getError())};
    case ExportText::End::Cancelled:
        return {StatusCode::Cancelled, path, {}};
    }
    text = QByteArray::fromStdString(exported.getText());
    return {};
}

StatusCode SubtreeTransfer::importTree(const QString& path, const QString& type, const QByteArray& text)
{
    TransferReport report;
    return importTree(path, type, text, report);
}

StatusCode SubtreeTransfer::importTree(const QString& path, const QString& type, const QByteArray& text,
                                       TransferReport& report)
{
    const auto operation = [&] { return readTree(path, type, text, report); };
    return finish(guardMemory(operation, noMemoryAt(path)), report);
}

SubtreeTransfer::Refusal SubtreeTransfer::readTree(const QString& path, const QString& type,
                                                   const QByteArray& text, TransferReport& report)
{
    auto document = Documents::makeDocument(type.toStdString());
    if (!document)
        return {StatusCode::BackendFailure, path, noType(type)};
    const Documents::Outcome outcome = document->parse(text.toStdString());
    if (!outcome.ok()) {
        report.setReason(QStringLiteral("line %1, column %2: %3")
                             .arg(outcome.line)
                             .arg(outcome.column)
                             .arg(QString::fromStdString(outcome.error)));
        return {StatusCode::BackendFailure, path,
                QStringLiteral("the text is no %1: %2").arg(type, report.getReason())};
    }
    if (!path.isEmpty() && !isValidPath(path))
        return {StatusCode::InvalidPath, path, RefusalText::invalidPath(path)};
    // Nearly always there is one entry a line, or between two commas.
    const auto expected =
        std::max(std::count(text.begin(), text.end(), '\n'), std::count(text.begin(), text.end(), ','));
    return takeIn(std::move(document), type, path, std::size_t(expected), report);
}

SubtreeTransfer::Refusal SubtreeTransfer::takeIn(std::unique_ptr<Documents::Document> document,
                                                 const QString& type, const QString& path,
                                                 std::size_t expected, TransferReport& report)
{
    TransferProgress progress(report, expected);
    Refusal refusal;
    const bool isEncoded = type == jsonType && EncodedNames::areSaidIn(*document);
    const History::Scope step(store->getHistory(), [&path] { return QStringLiteral("Import %1").arg(path); });
    TreeEdit edit(*store, {path}, step.getRecorder());
    // Files of lines may tell of a group in several places, and what is written at once is in tree order.
    const bool isInTreeOrder = type == jsonType || type == xmlType;
    BulkWrite bulk(edit, isInTreeOrder ? path : QString());
    std::string group; // the one that came last, and holds nothing so far
    const auto addGroup = [&] {
        if (!group.empty())
            refusal = add(bulk, joinedPath(path, group), {{}, 0, {}, AccessMode::ReadWrite, true});
        group.clear();
    };
    document->visit([&](const Documents::Entry& entry) {
        if (refusal.status != StatusCode::Success || (isEncoded && entry.path == EncodedNames::member))
            return;
        const std::string& place = isEncoded ? EncodedNames::fromDocument(entry.path) : entry.path;
        if (!isBelow(place, group))
            addGroup();
        group.clear();
        if (!progress.advance())
            refusal.status = StatusCode::Cancelled;
        else if (entry.value.type == Type::Group)
            group = place;
        else if (refusal.status == StatusCode::Success)
            refusal =
                add(bulk, joinedPath(path, place),
                    {{}, 0, FrameworkCore::Values::toVariant(entry.value), AccessMode::ReadWrite, false});
    });
    document.reset(); // a great subtree is not held twice
    if (refusal.status == StatusCode::Success)
        addGroup();
    if (refusal.status == StatusCode::Success)
        refusal = writeDocuments(bulk);
    if (refusal.status == StatusCode::Success)
        bulk.finish();
    return refusal;
}

} // namespace Repository
