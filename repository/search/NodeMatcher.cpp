#include "repository/search/NodeMatcher.h"

#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/backends/Backend.h"
#include "repository/common/PathRules.h"
#include "repository/store/BackendLookup.h"
#include "repository/store/ListElement.h"
#include "repository/store/Refusals.h"
#include "repository/store/WriteCheck.h"

namespace Repository {

using namespace FrameworkCore::AppConfig;

namespace {

QString typeName(const QVariant& value)
{
    const auto type = FrameworkCore::Values::typeOf(value.userType());
    const std::string_view name = FrameworkCore::Values::rowOf(type).name;
    return QString::fromLatin1(name.data(), int(name.size()));
}

QString textOf(const QVariant& value)
{
    const auto text = FrameworkCore::Values::convertVariant(value, QMetaType::QString);
    return text
               ? text->toString()
               : QString::fromStdString(FrameworkCore::Values::toText(FrameworkCore::Values::toValue(value)));
}

} // namespace

void NodeMatcher::Candidate::takeFrom(const Node& node, AttributeTree& tree)
{
    node.copyPath(path);
    isAttribute = node.isAttribute();
    isReadable = isAttribute && node.isReadable();
    if (!isReadable) {
        value = QVariant();
        return;
    }
    const std::lock_guard lock(tree.index.shardOf(node).mutex);
    value = node.value.toVariant();
}

bool NodeMatcher::Candidate::takeElement(const QString& elementPath, AttributeTree& tree)
{
    const auto element = ListElement::at(elementPath);
    const std::shared_lock lock(tree.structure);
    const Node* const list = element && !tree.nodeOf(elementPath) ? tree.nodeOf(element->list) : nullptr;
    if (!list)
        return false;
    const std::lock_guard shardLock(tree.index.shardOf(*list).mutex);
    const QVariant text = element->readFrom(list);
    path = elementPath;
    isAttribute = true;
    isReadable = list->isReadable();
    value = isReadable ? text : QVariant();
    return text.isValid();
}

NodeMatcher::NodeMatcher(AttributeTree& attributes, const SearchQuery& searched)
    : tree(attributes), query(searched), text(searched), paths(searched.pathPattern)
{
}

std::optional<bool> NodeMatcher::matches(const Candidate& candidate) const
{
    if (!query.pathPattern.isEmpty() && !paths.matches(candidate.path))
        return false;
    if (!query.types.isEmpty() && !(candidate.isReadable && query.types.contains(typeName(candidate.value))))
        return false;
    return query.text.isEmpty() && !query.isWhole ? true : hasText(candidate);
}

std::optional<bool> NodeMatcher::hasText(const Candidate& candidate) const
{
    std::optional<bool> found = false;
    const QString& path = candidate.path;
    if (query.fields.testFlag(SearchQuery::Name))
        found = text.matches(path.midRef(path.lastIndexOf(pathSeparator) + 1));
    if (found == false && query.fields.testFlag(SearchQuery::Path))
        found = text.matches(QStringRef(&path));
    if (found == false && query.fields.testFlag(SearchQuery::Value) && candidate.isReadable)
        found = hasTextInValue(candidate.value);
    if (found == false && query.fields.testFlag(SearchQuery::Type)) {
        const QString type = hitOf(candidate).type;
        found = text.matches(QStringRef(&type));
    }
    return found;
}

std::optional<bool> NodeMatcher::hasTextInValue(const QVariant& value) const
{
    if (value.userType() == QMetaType::QString)
        return text.matches(QStringRef(static_cast<const QString*>(value.constData())));
    const QString whole = textOf(value);
    std::optional<bool> found = text.matches(QStringRef(&whole));
    const QStringList elements =
        value.userType() == QMetaType::QStringList ? value.toStringList() : QStringList();
    for (auto element = elements.begin(); element != elements.end() && found == false; ++element)
        found = text.matches(QStringRef(&*element));
    return found;
}

NodeMatcher::SearchHit NodeMatcher::hitOf(const Candidate& candidate) const
{
    SearchHit hit;
    hit.path = candidate.path;
    hit.value = candidate.value;
    if (!candidate.isAttribute)
        hit.type = QStringLiteral("group");
    else if (candidate.isReadable)
        hit.type = typeName(candidate.value);
    return hit;
}

// Whether the entry is a merge key, which names the maps merged into its group and has no value of its own.
bool NodeMatcher::namesMerge(const QString& path) const
{
    using Origin = Backend::Origin;
    const auto backend = backendOf(tree, path);
    return backend && backend->originOf(path) == Origin::Reference &&
           backend->originOf(parentPath(path).toString()) != Origin::Reference;
}

std::optional<bool> NodeMatcher::replaceIn(SearchHit& hit) const
{
    const auto after = replaced(hit.value, hit.path, hit.refusal);
    if (!after)
        return {};
    if (namesMerge(hit.path))
        return false;
    hit.replacement = *after;
    if (!hit.refusal.ok() || FrameworkCore::Values::isSameValue(hit.value, hit.replacement))
        return !hit.refusal.ok();
    const std::shared_lock lock(tree.structure);
    const Node* const node = tree.nodeOf(hit.path);
    if (!node || !node->isAttribute())
        return false;
    const std::lock_guard shardLock(tree.index.shardOf(*node).mutex);
    QVariant accepted;
    hit.refusal = Refusals::notSet(acceptRetyped(*node, hit.replacement, accepted), hit.path, hit.replacement,
                                   !node->isReadable());
    return true;
}

// Of the type that the attribute has, or in a file that guesses types, that the text looks like.
std::optional<QVariant> NodeMatcher::replaced(const QVariant& value, const QString& path,
                                              Outcome& refusal) const
{
    if (value.userType() == QMetaType::QStringList) {
        QStringList elements = value.toStringList();
        for (QString& element : elements) {
            const auto after = text.replaced(element);
            if (!after)
                return {};
            element = *after;
        }
        return elements;
    }
    const QString before = textOf(value);
    const auto after = text.replaced(before);
    if (!after || *after == before)
        return after ? std::optional(value) : std::nullopt;
    std::shared_ptr<Backend> backend;
    {
        const std::shared_lock lock(tree.structure);
        const Node* const node = tree.nodeOf(path);
        if (node && node->backend)
            backend = node->backend->shared_from_this();
    }
    const std::string bytes = FrameworkCore::Values::toText(FrameworkCore::Values::toValue(*after));
    if (backend && !backend->namesType(path))
        return FrameworkCore::Values::toVariant(FrameworkCore::Values::plainValue(bytes));
    const auto read = FrameworkCore::Values::readText(bytes, FrameworkCore::Values::typeOf(value.userType()));
    if (read.ok())
        return FrameworkCore::Values::toVariant(read.value);
    refusal = Refusals::notSet(Refusals::wrongType(*after, value.userType()), path, *after, false);
    return QVariant(*after);
}

} // namespace Repository
