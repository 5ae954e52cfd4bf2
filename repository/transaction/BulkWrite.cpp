#include "repository/transaction/BulkWrite.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/common/PathRules.h"
#include "repository/common/Texts.h"
#include "repository/store/Refusals.h"
#include "repository/store/WriteCheck.h"
#include "repository/transaction/Projection.h"
#include "repository/transaction/SubtreeRemoval.h"

#include <algorithm>
#include <utility>

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::Values::Value;

namespace {

constexpr std::size_t fewNodes = 1000; // of more, sorting them at the end is quicker than asking for each

// How the next node on the way is placed. In what is new itself, nodes may keep the given order.
NodeWriter::Placing placingIn(const std::vector<Node*>& way, bool appends)
{
    return appends && way.size() > 1 ? NodeWriter::Placing::Last : NodeWriter::Placing::ByDocument;
}

} // namespace

BulkWrite::BulkWrite(Transaction& bulkTransaction, const QString& rootPath)
    : transaction(bulkTransaction), nodes(transaction.getNodes()), root(rootPath)
{
    if (!root.isEmpty() && !nodes.find(root))
        newPlace = noteParent(nodes.nearest(root)).backend;
}

void BulkWrite::expect(std::size_t count)
{
    items.reserve(count);
    held.reserve(newPlace ? count : 0);
}

BulkWrite::Target BulkWrite::targetOf(const QString& path)
{
    if (newPlace)
        return {nullptr, newPlace};
    if (isInWhole(path))
        return {nullptr, whole->backend};
    const QStringView parent = parentPath(path);
    if (!isParentKnown || parent != knownParent) {
        knownParent = parent.toString();
        parentNode = &noteParent(nodes.nearest(parent));
        parentBackend = parentNode->backend;
        if (parentNode->getPathSize() != parent.size())
            parentNode = nullptr;
        isParentKnown = true;
    }
    Node* node = parentNode ? nodes.find(path) : nullptr;
    return {node, node ? node->backend : parentBackend};
}

Node& BulkWrite::noteParent(Node& node)
{
    if (node.isAttribute())
        parents.append(node.getPath());
    return node;
}

Outcome BulkWrite::insert(Backend& backend, const QString& path, Value value)
{
    if (newPlace) {
        held.push_back({pathBytes(pathAfter(path, root.size())), std::move(value)});
        return {};
    }
    if (isInWhole(path)) {
        whole->entries.push_back({pathBytes(pathAfter(path, whole->path.size())), std::move(value), {}});
        return {};
    }
    return edit(backend).insert(path, value);
}

bool BulkWrite::isInWhole(const QString& path)
{
    return whole && isAtOrBelow(path, whole->path);
}

QString BulkWrite::firstMissing(const QString& path) const
{
    const Node& there = nodes.nearest(path);
    int end = there.getPathSize();
    while (end < path.size()) {
        const int next = path.indexOf(pathSeparator, end + 1);
        end = next < 0 ? path.size() : next;
        const QString place = path.left(end);
        if (!there.backend || !there.backend->contains(place)) // what is written already is shown later
            return place;
    }
    return {};
}

bool BulkWrite::isGroup(const QString& path) const
{
    const Node* const node = nodes.find(path);
    return node && !node->isAttribute();
}

Outcome BulkWrite::beginWhole(const QString& path, std::optional<Documents::Excerpt> excerpt)
{
    Outcome outcome = endWhole();
    Node* const former = nodes.find(path);
    const bool isFile = former && former->isBackendRoot();
    const auto isArray = isFile ? former->backend->isArray(path) : std::nullopt;
    if (isFile && !isArray)
        return outcome;
    if (isArray == false && former->children && former->children->count > 0)
        return Outcome(StatusCode::BackendFailure,
                       Texts::tr("its file holds a group, and is not replaced by an array"))
            .of(Outcome::Operation::Change, path);
    if (outcome.ok() && former && !isFile)
        outcome = SubtreeRemoval(transaction, *former).check().of(Outcome::Operation::Change, path);
    Backend* const backend = former ? former->backend : noteParent(nodes.nearest(path)).backend;
    whole = Whole{path, backend, former, items.size(), {}, std::move(excerpt)};
    return outcome;
}

Outcome BulkWrite::endWhole()
{
    if (!whole)
        return {};
    const Whole ended = *std::exchange(whole, std::nullopt);
    if (!ended.backend) {
        if (ended.former)
            replaced.push_back(ended.former);
        return {};
    }
    DocumentEdit& document = edit(*ended.backend);
    if (ended.excerpt && !ended.former && document.insertExcerpt(ended.path, *ended.excerpt, ended.entries))
        return {};
    std::size_t refused = 0;
    Outcome outcome = ended.former ? document.replaceAll(ended.path, ended.entries, refused)
                                   : document.insertAll(ended.path, ended.entries, refused);
    if (!outcome.ok())
        return explain(std::move(outcome), items[std::min(ended.firstItem + refused, items.size() - 1)],
                       *ended.backend);
    if (ended.former) {
        reshaped.push_back(ended.backend);
        std::for_each(items.begin() + std::ptrdiff_t(ended.firstItem), items.end(),
                      [](Item& item) { item.isShown = true; });
    }
    return outcome;
}

Outcome BulkWrite::explain(Outcome outcome, const Item& item, Backend& backend) const
{
    if (item.isGroup)
        return outcome.of(Outcome::Operation::Change, item.path);
    const bool isHidden = !isReadable(backend.getAccessMode());
    return Refusals::notSet(Refusals::unfit(std::move(outcome), item.value, isHidden), item.path, item.value,
                            isHidden);
}

DocumentEdit& BulkWrite::edit(Backend& backend)
{
    DocumentEdit& document = transaction.edit(backend);
    if (std::find(batches.begin(), batches.end(), &backend) == batches.end()) {
        document.beginBatch();
        batches.push_back(&backend);
    }
    return document;
}

// Of an attribute that exists; the tree shows it in finish.
Outcome BulkWrite::write(const Node& node, const QVariant& value, const std::optional<Value>& inFile,
                         QVariant& accepted)
{
    {
        const std::lock_guard shardLock(nodes.getTree().index.shardOf(node).mutex);
        Outcome outcome = acceptWrite(node, value, accepted);
        if (!outcome.ok() || !node.backend)
            return outcome;
    }
    const bool isKept = inFile && FrameworkCore::Values::isSameValue(value, accepted);
    return Refusals::unfit(
        edit(*node.backend).set(node.getPath(), isKept ? *inFile : FrameworkCore::Values::toValue(accepted)),
        accepted, !node.isReadable());
}

Outcome BulkWrite::writeDocuments()
{
    Outcome last = endWhole();
    if (!last.ok())
        return last;
    for (Backend* backend : batches) {
        QString path;
        Outcome outcome = transaction.edit(*backend).endBatch(path);
        if (!outcome.ok())
            return outcome.of(Outcome::Operation::Change, path);
    }
    if (held.empty())
        return {};
    std::size_t refused = 0;
    Outcome outcome = transaction.edit(*newPlace).insertAll(root, held, refused);
    if (outcome.ok()) {
        std::vector<Documents::Entry>().swap(held); // a great subtree is not held twice
        return outcome;
    }
    return explain(std::move(outcome), items[refused], *newPlace);
}

std::optional<Outcome> BulkWrite::renameInDocument(const QString& place)
{
    auto outcome =
        transaction.edit(*newPlace).rename(place, pathAfter(root, parentPath(root).size()).toString());
    if (outcome && outcome->ok())
        std::vector<Documents::Entry>().swap(held);
    return outcome;
}

bool BulkWrite::writeExcerpt(const Documents::Excerpt& excerpt)
{
    if (!transaction.edit(*newPlace).insertExcerpt(root, excerpt, held))
        return false;
    std::vector<Documents::Entry>().swap(held);
    return true;
}

std::optional<std::size_t> BulkWrite::writeCommented(const std::vector<Documents::CarriedComment>& comments)
{
    if (comments.empty() || !newPlace)
        return {};
    const auto excerpt = newPlace->excerptOf(root, held, comments);
    const auto former = newPlace->getComments();
    if (!excerpt || !writeExcerpt(*excerpt))
        return {};
    return Documents::countMissing(comments, former, newPlace->getComments());
}

Outcome BulkWrite::addAttribute(const QString& path, const QVariant& value, AccessMode access,
                                const std::optional<Value>& inFile)
{
    if (path.isEmpty())
        return {StatusCode::InvalidPath, Texts::tr("a value needs a path")};
    if (isTooDeep(path))
        return Refusals::invalidPath(path);
    if (isAtOrBelow(path, ownRoot))
        return Refusals::ownTree();
    if (whole && !isInWhole(path)) {
        Outcome ended = endWhole();
        if (!ended.ok())
            return ended;
    }
    const Target place = targetOf(path);
    if (place.node && place.node->isAttribute()) {
        QVariant accepted;
        Outcome outcome = write(*place.node, value, inFile, accepted);
        if (outcome.ok())
            items.push_back({path, accepted, place.node->getAccess(), false, place.node});
        return outcome;
    }
    const NodeIndex::Key key(path);
    Outcome outcome = acceptNew(nodes.getTree(), key, place.node, place.backend, value);
    if (outcome.ok() && inFile && !place.backend)
        return Refusals::losesDigits();
    if (!outcome.ok())
        return outcome;
    if (place.backend) {
        outcome = insert(*place.backend, path, inFile ? *inFile : FrameworkCore::Values::toValue(value));
        if (!outcome.ok())
            return Refusals::unfit(std::move(outcome), value, !isReadable(place.backend->getAccessMode()));
        if (place.node)
            nodes.getOrder().restoreLater(*place.backend); // the value may come before the group
        const AccessMode most = place.backend->getAccessMode();
        const auto common = AccessMode(quint8(access) & quint8(most));
        access = common == AccessMode::None ? most : common;
    }
    items.push_back({path, value, access, false, nullptr, key.hash});
    return outcome;
}

Outcome BulkWrite::addGroup(const QString& path)
{
    if (whole && !isInWhole(path)) {
        Outcome ended = endWhole();
        if (!ended.ok())
            return ended;
    }
    const Target place = path.isEmpty() ? Target() : targetOf(path);
    if (place.node || !place.backend)
        return {};
    Outcome outcome = acceptNew(nodes.getTree(), NodeIndex::Key(path), nullptr, place.backend, {});
    if (outcome.ok())
        outcome = insert(*place.backend, path, Value());
    if (outcome.ok())
        items.push_back({path, {}, AccessMode::ReadWrite, true});
    return outcome;
}

void BulkWrite::finish()
{
    if (newPlace)
        showNew();
    transaction.commit();
    for (const QString& parent : std::as_const(parents)) {
        Node* const node = nodes.find(parent);
        if (!node)
            continue;
        nodes.followValue(*node);
        if (node->backend && node->backend->isArray(parent) == true) // a list, or was one
            reshaped.push_back(node->backend);
    }
    for (Node* const node : replaced)
        nodes.remove(*node);
    for (const Item& item : items) {
        if (!item.isShown && !newPlace)
            show(item);
    }
    for (Backend* const backend : reshaped)
        Projection(transaction).showAll(*backend);
}

// Where nothing was, all nodes are made before the first is filed.
void BulkWrite::showNew()
{
    NewNodes made;
    std::vector<Node*> attributes;
    attributes.reserve(items.size());
    std::vector<Node*> way;
    const bool keepsOrder = newPlace->keepsGivenOrder();
    const bool appends = keepsOrder || items.size() > fewNodes;
    if (appends && !keepsOrder)
        nodes.getOrder().restoreLater(*newPlace);
    for (Item& item : items) {
        Node& parent = newParent(way, made, item.path, appends);
        const auto placing = placingIn(way, appends);
        if (item.isGroup) {
            way.push_back(&nodes.addGroup(made, parent, item.path, placing));
            continue;
        }
        way.push_back(&nodes.addAttribute(made, parent, item.path, item.hash, std::move(item.value),
                                          item.access, placing));
        attributes.push_back(way.back());
    }
    nodes.file(made, attributes);
}

// The nodes on the way are the last one and those above it, of which the first was there before.
Node& BulkWrite::newParent(std::vector<Node*>& way, NewNodes& made, QStringView path, bool appends)
{
    const QStringView parent = parentPath(path);
    if (way.empty())
        way.push_back(&nodes.ensure(parentPath(root)));
    while (way.size() > 1 && !way.back()->leadsTo(parent))
        way.pop_back();
    for (qsizetype length = way.back()->getPathSize(); length < parent.size();) {
        length = path.indexOf(pathSeparator, length == 0 ? 0 : length + 1);
        way.push_back(
            &nodes.addGroup(made, *way.back(), path.left(length).toString(), placingIn(way, appends)));
    }
    return *way.back();
}

void BulkWrite::show(const Item& item)
{
    if (item.node) {
        nodes.setAttribute(*item.node, item.value, item.access);
        return;
    }
    const QStringView parent = parentPath(item.path);
    if (!shownParent || !shownParent->hasPath(parent))
        shownParent = &nodes.ensure(parent);
    Node& node = nodes.ensureChild(*shownParent, item.path);
    if (!item.isGroup)
        nodes.setAttribute(node, item.value, item.access);
}

} // namespace Repository
