#include "repository/transaction/BulkWrite.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/common/PathRules.h"
#include "repository/store/Refusals.h"

#include <algorithm>

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::Notification::UpdateResult;
using FrameworkCore::Values::Value;

namespace {

constexpr std::size_t fewNodes = 1000; // of more, sorting them at the end is quicker than asking for each

// How the next node on the way is placed. In what is new itself, nodes may stand as they were given.
TreeEdit::Placing placingIn(const std::vector<Node*>& way, bool appends)
{
    return appends && way.size() > 1 ? TreeEdit::Placing::Last : TreeEdit::Placing::ByDocument;
}

} // namespace

BulkWrite::BulkWrite(TreeEdit& treeEdit, const QString& rootPath) : edit(treeEdit), root(rootPath)
{
    if (!root.isEmpty() && !edit.find(root))
        newPlace = edit.nearest(root).backend;
}

BulkWrite::~BulkWrite()
{
    if (isFinished)
        return;
    items = {}; // which may have taken the memory that is needed now
    held = {};
    for (Backend* backend : touched)
        edit.editDocument(*backend).rollBack();
}

void BulkWrite::expect(std::size_t count)
{
    items.reserve(count);
    held.reserve(newPlace ? count : 0);
}

BulkWrite::Place BulkWrite::placeOf(const QString& path)
{
    if (newPlace)
        return {nullptr, newPlace};
    const QStringView parent = parentPath(path);
    if (!isParentKnown || parent != knownParent) {
        knownParent = parent.toString();
        parentNode = &edit.nearest(parent);
        parentBackend = parentNode->backend;
        if (parentNode->path.size() != parent.size())
            parentNode = nullptr;
        isParentKnown = true;
    }
    Node* node = parentNode ? edit.find(path) : nullptr;
    return {node, node ? node->backend : parentBackend};
}

Outcome BulkWrite::insert(Backend& backend, const QString& path, Value value)
{
    if (newPlace) {
        held.push_back({pathBytes(pathBehind(path, root.size())), std::move(value)});
        return {};
    }
    keepText(backend);
    return backend.insert(path, value);
}

void BulkWrite::keepText(Backend& backend)
{
    if (std::find(touched.begin(), touched.end(), &backend) != touched.end())
        return;
    edit.editDocument(backend).setRollbackPoint();
    backend.beginRun();
    touched.push_back(&backend);
}

void BulkWrite::prepareTakingBack()
{
    if (newPlace)
        keepText(*newPlace);
}

Outcome BulkWrite::writeDocuments()
{
    for (Backend* backend : touched) {
        QString path;
        Outcome outcome = backend->endRun(path);
        if (!outcome.ok())
            return outcome.of(Outcome::Operation::Change, path);
    }
    if (held.empty())
        return {};
    edit.editDocument(*newPlace);
    std::size_t refused = 0;
    Outcome outcome = newPlace->insertAll(root, held, refused);
    if (outcome.ok()) {
        std::vector<Documents::Entry>().swap(held); // a great subtree is not held twice
        return outcome;
    }
    const Item& item = items[refused];
    if (item.isGroup)
        return outcome.of(Outcome::Operation::Change, item.path);
    const bool isHidden = !isReadable(newPlace->getAccessMode());
    return Refusals::notSet(Refusals::unfit(std::move(outcome), item.value, isHidden), item.path, item.value,
                            isHidden);
}

Outcome BulkWrite::addAttribute(const QString& path, const QVariant& value, AccessMode access)
{
    if (path.isEmpty())
        return {StatusCode::InvalidPath, QStringLiteral("a value needs a path")};
    if (isTooDeep(path))
        return Refusals::invalidPath(path);
    if (isAtOrBelow(path, ownRoot))
        return Refusals::ownTree();
    const Place place = placeOf(path);
    if (place.node && place.node->isAttribute()) {
        if (place.backend)
            keepText(*place.backend);
        QVariant accepted;
        Outcome outcome = edit.writeDocument(*place.node, value, accepted);
        if (outcome.ok())
            items.push_back({path, accepted, place.node->getAccess(), false, place.node});
        return outcome;
    }
    const NodeIndex::Key key(path);
    Outcome outcome = edit.acceptNew(key, place.node, place.backend, value);
    if (!outcome.ok())
        return outcome;
    if (place.backend) {
        outcome = insert(*place.backend, path, FrameworkCore::Values::toValue(value));
        if (!outcome.ok())
            return Refusals::unfit(std::move(outcome), value, !isReadable(place.backend->getAccessMode()));
        if (place.node)
            edit.restoreOrder(*place.backend); // the value may come before the group
        const AccessMode most = place.backend->getAccessMode();
        const auto common = AccessMode(quint8(access) & quint8(most));
        access = common == AccessMode::None ? most : common;
    }
    items.push_back({path, value, access, false, nullptr, key.hash});
    return outcome;
}

Outcome BulkWrite::addGroup(const QString& path)
{
    const Place place = path.isEmpty() ? Place() : placeOf(path);
    if (place.node || !place.backend)
        return {};
    Outcome outcome = edit.acceptNew(NodeIndex::Key(path), nullptr, place.backend, {});
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
    isFinished = true;
    if (newPlace)
        return;
    for (const Item& item : items)
        show(item);
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
        edit.restoreOrder(*newPlace);
    for (Item& item : items) {
        Node& parent = newParent(way, made, item.path, appends);
        const auto placing = placingIn(way, appends);
        if (item.isGroup) {
            way.push_back(&edit.addGroup(made, parent, item.path, placing));
            continue;
        }
        way.push_back(&edit.addAttribute(made, parent, item.path, item.hash, std::move(item.value),
                                         item.access, placing));
        attributes.push_back(way.back());
    }
    edit.file(made, attributes);
}

// The nodes on the way are the last one and those above it, of which the first was there before.
Node& BulkWrite::newParent(std::vector<Node*>& way, NewNodes& made, QStringView path, bool appends)
{
    const QStringView parent = parentPath(path);
    if (way.empty())
        way.push_back(&edit.ensure(parentPath(root)));
    while (way.size() > 1 && !isAtOrBelow(parent, way.back()->path))
        way.pop_back();
    while (way.back()->path.size() < parent.size()) {
        const int nameStart = way.back()->path.isEmpty() ? 0 : way.back()->path.size() + 1;
        const qsizetype nameEnd = path.indexOf(pathSeparator, nameStart);
        way.push_back(
            &edit.addGroup(made, *way.back(), path.left(nameEnd).toString(), placingIn(way, appends)));
    }
    return *way.back();
}

void BulkWrite::show(const Item& item)
{
    if (item.node) {
        const bool isChanged = !FrameworkCore::Values::isSameValue(edit.stateOf(item.path).value, item.value);
        edit.setAttribute(*item.node, item.value, item.access,
                          isChanged ? UpdateResult::Changed : UpdateResult::Unchanged);
        return;
    }
    const QStringView parent = parentPath(item.path);
    if (!shownParent || shownParent->path != parent)
        shownParent = &edit.ensure(parent);
    Node& node = edit.ensureChild(*shownParent, item.path);
    if (!item.isGroup)
        edit.setAttribute(node, item.value, item.access, UpdateResult::Created);
}

} // namespace Repository
