#include "repository/transfer/SubtreeReader.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/backends/Backend.h"
#include "repository/common/Texts.h"
#include "repository/documents/common/Format.h"
#include "repository/store/AttributeTree.h"

#include <algorithm>

namespace Repository {

using FrameworkCore::AppConfig::AccessMode;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;
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

bool isEmptyGroup(const Node& node)
{
    return !node.isAttribute() && (!node.children || node.children->count == 0);
}

// What a copy of the attribute may be used for, before its destination limits that. What only the backend of
// the original forbids is allowed to the copy.
AccessMode accessOfCopy(const Node& node)
{
    const AccessMode most = node.backend ? node.backend->getAccessMode() : AccessMode::ReadWrite;
    return node.getAccess() == most || isOwn(node) ? AccessMode::ReadWrite : node.getAccess();
}

} // namespace

Value SubtreePart::exact() const
{
    return isGroup ? Value() : inFile ? *inFile : FrameworkCore::Values::toValue(value);
}

SubtreeReader::SubtreeReader(AttributeTree& attributes, const Node& subtreeRoot)
    : tree(attributes), root(subtreeRoot)
{
    const int rootLength = root.getPathSize();
    std::vector<const Node*> walk{&root};
    while (!walk.empty()) {
        const Node* node = walk.back();
        walk.pop_back();
        if (!root.parent && node->hasPath(ownRoot))
            continue;
        if (node->parent)
            add(*node, rootLength);
        if (!node->children)
            continue;
        const std::vector<Node*>& places = node->children->places;
        for (auto child = places.rbegin(); child != places.rend(); ++child) {
            if (*child)
                walk.push_back(*child);
        }
    }
}

void SubtreeReader::add(const Node& node, int rootLength)
{
    if (isEmptyGroup(node)) {
        parts.push_back({node.getPath(), rootLength, {}, AccessMode::ReadWrite, true, {}});
        return;
    }
    if (&node != &root && isReference(node))
        return;
    const std::lock_guard shardLock(tree.index.shardOf(node).mutex);
    if (!node.isAttribute())
        return;
    if (node.isReadable())
        parts.push_back({node.getPath(), rootLength, node.value.toVariant(), accessOfCopy(node), false,
                         node.finerValue()});
    else if (hidden.isEmpty())
        hidden = node.getPath();
}

// What it stands for is read.
bool SubtreeReader::isReference(const Node& node)
{
    if (node.backend != asked) {
        asked = node.backend;
        isLinked = asked && asked->isLinked(asked->getName());
    }
    return isLinked && asked->originOf(node.getPath()) == Backend::Origin::Reference;
}

void SubtreeReader::addDeclarations(const Documents::Format& format)
{
    const std::string_view start = format.getDeclarationStart();
    if (start.empty())
        return;
    const QString declaration = QString::fromUtf8(start.data(), int(start.size()));
    const QString rootPath = root.getPath();
    const qsizetype nameStart = rootPath.size() - root.getName().size();
    for (const Node* around = root.parent; around && around->children; around = around->parent) {
        for (const Node* node : around->children->places) {
            if (!node || !node->getName().startsWith(declaration))
                continue;
            const QString own = joinedPath(rootPath, node->getName());
            const QString prefix = own.mid(rootPath.size() + 1 + declaration.size()) + QLatin1Char(':');
            const auto isOwn = [&](const SubtreePart& part) { return part.fullPath == own; };
            const auto usesIt = [&](const SubtreePart& part) {
                return usesPrefix(QStringView(part.fullPath).mid(nameStart), prefix);
            };
            if (std::any_of(parts.begin(), parts.end(), usesIt) &&
                std::none_of(parts.begin(), parts.end(), isOwn)) {
                add(*node, rootPath.size());
                parts.back().fullPath = own;
            }
        }
    }
}

const Backend* SubtreeReader::getWriter() const
{
    const bool hasOthers =
        std::any_of(tree.backends.begin(), tree.backends.end(), [this](const auto& backend) {
            return backend.get() != root.backend && root.leadsTo(backend->getName());
        });
    return hidden.isEmpty() && !hasOthers ? root.backend : nullptr;
}

Outcome SubtreeReader::check(bool isWhole) const
{
    if (hidden.isEmpty() || (!isWhole && !parts.empty()))
        return {};
    return Outcome(StatusCode::NotReadable,
                   Texts::tr("it is write-only, and its value is not taken elsewhere"))
        .of(Outcome::Operation::Change, hidden);
}

} // namespace Repository
