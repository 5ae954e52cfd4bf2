#include "repository/transfer/SubtreeTransfer.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/backends/Backend.h"
#include "repository/common/MemoryGuard.h"
#include "repository/common/PathRules.h"
#include "repository/common/RepositoryLog.h"
#include "repository/documents/Formats.h"
#include "repository/operations/AttributeStore.h"
#include "repository/store/BackendLookup.h"
#include "repository/store/Refusals.h"
#include "repository/transaction/BulkWrite.h"
#include "repository/transaction/SubtreeRemoval.h"
#include "repository/transfer/ExportText.h"

namespace Repository {

using FrameworkCore::AppConfig::AccessMode;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;
using FrameworkCore::AppConfig::Interfaces::TransferReport;
using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

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

Outcome cancelled()
{
    return {StatusCode::Cancelled, QStringLiteral("it was cancelled")};
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

SubtreeTransfer::SubtreeTransfer(std::shared_ptr<AttributeStore> attributes)
    : store(std::move(attributes)), tree(*store->getTree())
{
}

template <typename Operation>
Outcome SubtreeTransfer::run(const QString& path, const Operation& operation)
{
    return logged(guardMemory(operation).of(Outcome::Operation::Change, path));
}

Outcome SubtreeTransfer::add(BulkWrite& bulk, const QString& path, const Part& part) const
{
    if (part.isGroup)
        return bulk.addGroup(path).of(Outcome::Operation::Change, path);
    Outcome outcome = bulk.addAttribute(path, part.value, part.access);
    return outcome.ok() ? outcome
                        : Refusals::notSet(std::move(outcome), path, part.value, tree.hidesValues(path));
}

void SubtreeTransfer::addPart(const Node& node, int rootLength, std::vector<Part>& parts,
                              QString& hidden) const
{
    if (isEmptyGroup(node)) {
        parts.push_back({node.path, rootLength, {}, AccessMode::ReadWrite, true});
        return;
    }
    const std::lock_guard shardLock(tree.index.shardOf(NodeIndex::Key(node.path)).mutex);
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
void SubtreeTransfer::addDeclarations(const Node& root, const Documents::Format& format,
                                      std::vector<Part>& parts) const
{
    const std::string_view start = format.getDeclarationStart();
    if (start.empty())
        return;
    const QString declaration = QString::fromUtf8(start.data(), int(start.size()));
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

Outcome SubtreeTransfer::checkReadable(const std::vector<Part>& parts, const QString& hidden)
{
    if (hidden.isEmpty() || !parts.empty())
        return {};
    return Outcome(StatusCode::NotReadable,
                   QStringLiteral("it is write-only, and its value is not taken elsewhere"))
        .of(Outcome::Operation::Change, hidden);
}

Outcome SubtreeTransfer::copyTree(const QString& from, const QString& to)
{
    TransferReport report;
    return copyTree(from, to, report);
}

Outcome SubtreeTransfer::copyTree(const QString& from, const QString& to, TransferReport& report)
{
    return run(to, [&] {
        const History::Scope step(store->getHistory(),
                                  [&] { return QStringLiteral("Copy %1 to %2").arg(from, to); });
        TreeEdit edit(tree, {from, to}, step.getRecorder());
        return transfer(edit, from, to, false, report);
    });
}

Outcome SubtreeTransfer::moveTree(const QString& from, const QString& to)
{
    TransferReport report;
    return run(to, [&] {
        const History::Scope step(store->getHistory(),
                                  [&] { return QStringLiteral("Move %1 to %2").arg(from, to); });
        TreeEdit edit(tree, {from, to}, step.getRecorder());
        return transfer(edit, from, to, true, report);
    });
}

Outcome SubtreeTransfer::transfer(TreeEdit& edit, const QString& from, const QString& to, bool isMove,
                                  TransferReport& report)
{
    Node* source = edit.find(from);
    if (!source)
        return Refusals::notFound().of(Outcome::Operation::Change, from);
    if (!isValidPath(to))
        return Refusals::invalidPath(to);
    if (isAtOrBelow(to, from))
        return {StatusCode::InvalidPath, QStringLiteral("a subtree cannot be put into itself")};
    if (edit.find(to))
        return Outcome(StatusCode::AlreadyExists, QStringLiteral("it exists already"))
            .advise(QStringLiteral("choose another name"));
    if (isMove && isAtOrBelow(from, ownRoot))
        return Refusals::ownTree().of(Outcome::Operation::Change, from);
    QString hidden;
    const std::vector<Part> parts = collect(*source, hidden);
    Outcome outcome = checkReadable(isMove ? std::vector<Part>() : parts, hidden);
    if (!outcome.ok())
        return outcome;

    BulkWrite bulk(edit, to);
    bulk.expect(parts.size());
    TransferProgress progress(report, parts.size());
    for (const Part& part : parts) {
        outcome = add(bulk, joined(to, part.path()), part);
        if (outcome.ok() && !progress.advance())
            return cancelled();
        if (!outcome.ok())
            return outcome;
    }
    if (isMove)
        bulk.prepareTakingBack();
    outcome = bulk.writeDocuments();
    if (!outcome.ok())
        return outcome;
    SubtreeRemoval removal(edit, *source);
    if (isMove) {
        outcome = removal.removeFromBackend();
        if (!outcome.ok())
            return outcome.of(Outcome::Operation::Change, from);
    }
    bulk.finish();
    if (isMove)
        removal.removeFromTree();
    return outcome;
}

Outcome SubtreeTransfer::exportTree(const QString& path, const QString& type, QByteArray& text)
{
    TransferReport report;
    return exportTree(path, type, text, report);
}

Outcome SubtreeTransfer::exportTree(const QString& path, const QString& type, QByteArray& text,
                                    TransferReport& report)
{
    return run(path, [&] { return writeTree(path, type, text, report); });
}

Outcome SubtreeTransfer::writeTree(const QString& path, const QString& type, QByteArray& text,
                                   TransferReport& report)
{
    if (!Documents::findFormat(type.toStdString()))
        return Refusals::noType(type);
    Outcome outcome = Refusals::notFound();
    std::vector<Part> parts;
    {
        const std::shared_lock lock(tree.structure);
        QString hidden;
        if (const Node* root = tree.nodeOf(path)) {
            parts = collect(*root, hidden);
            outcome = checkReadable(parts, hidden);
            addDeclarations(*root, *Documents::findFormat(type.toStdString()), parts);
        }
    }
    const auto sources = backendsTouching(tree, path);
    if (std::any_of(sources.begin(), sources.end(), [](const auto& source) { return source->isPrivate(); }))
        report.setPrivate();
    return outcome.ok() ? writeText(path, type, std::move(parts), text, report) : outcome;
}

Outcome SubtreeTransfer::writeText(const QString& path, const QString& type, std::vector<Part> parts,
                                   QByteArray& text, TransferReport& report)
{
    TransferProgress progress(report, 2 * parts.size());
    std::vector<Documents::Entry> entries;
    entries.reserve(parts.size());
    for (const Part& part : parts) {
        if (!progress.advance())
            return cancelled();
        entries.push_back(
            {pathBytes(part.path()), part.isGroup ? Value() : FrameworkCore::Values::toValue(part.value)});
    }
    std::vector<Part>().swap(parts); // a great subtree is not held twice
    ExportText exported(type.toStdString(), path.mid(path.lastIndexOf(pathSeparator) + 1).toStdString());
    switch (exported.write(std::move(entries), progress)) {
    case ExportText::End::Written:
        break;
    case ExportText::End::Refused:
        return Outcome(StatusCode::BackendFailure, QString::fromStdString(exported.getError()))
            .of(Outcome::Operation::Change, joinedPath(path, exported.getRefusedPath()));
    case ExportText::End::Cancelled:
        return cancelled();
    }
    text = QByteArray::fromStdString(exported.getText());
    return {};
}

Outcome SubtreeTransfer::importTree(const QString& path, const QString& type, const QByteArray& text)
{
    TransferReport report;
    return importTree(path, type, text, report);
}

Outcome SubtreeTransfer::importTree(const QString& path, const QString& type, const QByteArray& text,
                                    TransferReport& report)
{
    return run(path, [&] { return readTree(path, type, text, report); });
}

Outcome SubtreeTransfer::readTree(const QString& path, const QString& type, const QByteArray& text,
                                  TransferReport& report)
{
    const Documents::Format* const format = Documents::findFormat(type.toStdString());
    if (!format)
        return Refusals::noType(type);
    auto document = format->makeDocument();
    const Documents::Outcome parsed = document->parse(text.toStdString());
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
    return importDocument(std::move(document), *format, path, std::size_t(expected), report);
}

Outcome SubtreeTransfer::importDocument(std::unique_ptr<Documents::Document> document,
                                        const Documents::Format& format, const QString& path,
                                        std::size_t expected, TransferReport& report)
{
    TransferProgress progress(report, expected);
    Outcome outcome;
    const History::Scope step(store->getHistory(), [&path] { return QStringLiteral("Import %1").arg(path); });
    TreeEdit edit(tree, {path}, step.getRecorder());
    // What is written at once is in the order of the tree.
    BulkWrite bulk(edit, format.isInTreeOrder() ? path : QString());
    std::string group; // the one that came last, and holds nothing so far
    const auto addGroup = [&] {
        if (!group.empty())
            outcome = add(bulk, joinedPath(path, group), {{}, 0, {}, AccessMode::ReadWrite, true});
        group.clear();
    };
    format.visitImport(*document, [&](const Documents::Entry& entry) {
        if (!outcome.ok())
            return;
        const std::string& place = entry.path;
        if (!isBelow(place, group))
            addGroup();
        group.clear();
        if (!progress.advance())
            outcome = cancelled();
        else if (entry.value.type == Type::Group)
            group = place;
        else if (outcome.ok())
            outcome =
                add(bulk, joinedPath(path, place),
                    {{}, 0, FrameworkCore::Values::toVariant(entry.value), AccessMode::ReadWrite, false});
    });
    document.reset(); // a great subtree is not held twice
    if (outcome.ok())
        addGroup();
    if (outcome.ok())
        outcome = bulk.writeDocuments();
    if (outcome.ok())
        bulk.finish();
    return outcome;
}

} // namespace Repository
