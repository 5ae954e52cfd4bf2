#include "host/Utilities/ModelViews/tree/AttributeTreeFilter.h"

#include <algorithm>

namespace Utilities::ModelViews {

namespace {

// Runs of "*" mean what one does; without any, a last "." does not count.
QString normalized(const QString& searchPath)
{
    QString text;
    for (const QChar character : searchPath) {
        if (character != QLatin1Char('*') || !text.endsWith(QLatin1Char('*')))
            text += character;
    }
    if (!text.contains(QLatin1Char('*')) && text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text;
}

} // namespace

QStringList ancestorPaths(const QString& path)
{
    QStringList ancestors;
    for (int end = path.lastIndexOf(QLatin1Char('.')); end > 0;
         end = path.lastIndexOf(QLatin1Char('.'), end - 1))
        ancestors.append(path.left(end));
    return ancestors;
}

AttributeTreeFilter::AttributeTreeFilter(const QString& searchPath) : pattern(normalized(searchPath))
{
    const QStringList& literals = pattern.getLiterals();
    everything =
        std::all_of(literals.begin(), literals.end(), [](const QString& text) { return text.isEmpty(); });
    const int end = literals.first().lastIndexOf(QLatin1Char('.'));
    oneLevel = end != 0 && (literals.size() == 1 || (literals.size() == 2 && literals.last().isEmpty()));
    base = literals.first().left(std::max(end, 0));
    namePrefix = literals.first().mid(end + 1);
}

void AttributeTreeFilter::readFrom(const TreeInterface& tree)
{
    leading.clear();
    if (everything)
        return;
    if (oneLevel) {
        if (!base.isEmpty() && hasMatchBelowBase(tree)) {
            lead(base);
            leading.insert(base);
        }
        return;
    }
    const QStringList found =
        tree.findPaths({pattern.getLiterals().join(QLatin1Char('*')), Qt::CaseSensitive, true, -1});
    for (const QString& path : found)
        lead(path);
}

bool AttributeTreeFilter::hasMatchBelowBase(const TreeInterface& tree) const
{
    if (!pattern.hasWildcard())
        return tree.getNodeInformation(pattern.getLiterals().first()).exists;
    if (namePrefix.isEmpty())
        return tree.getChildCount(base) > 0;
    return !tree.findPaths({pattern.getLiterals().first() + QLatin1Char('*'), Qt::CaseSensitive, true, 1})
                .isEmpty();
}

void AttributeTreeFilter::lead(const QString& path)
{
    QString ancestor = path;
    for (;;) {
        const int end = ancestor.lastIndexOf(QLatin1Char('.'));
        if (end <= 0)
            return;
        ancestor.truncate(end);
        if (leading.contains(ancestor))
            return;
        leading.insert(ancestor);
    }
}

QVector<AttributeTreeFilter::ChildInformation> AttributeTreeFilter::children(const TreeInterface& tree,
                                                                             const QString& path) const
{
    QVector<ChildInformation> shown =
        oneLevel && path == base ? tree.getChildrenBeginningWith(path, namePrefix) : tree.getChildren(path);
    if (everything || (oneLevel && path == base && pattern.hasWildcard() && namePrefix.isEmpty()))
        return shown;
    QString childPath = path.isEmpty() ? path : path + QLatin1Char('.');
    const int begin = childPath.size();
    const auto hides = [&](ChildInformation& child) {
        childPath.resize(begin);
        childPath += child.name;
        if (matches(childPath))
            return false;
        child.childCount = -1; // some of its children may be hidden
        return !leading.contains(childPath);
    };
    shown.erase(std::remove_if(shown.begin(), shown.end(), hides), shown.end());
    return shown;
}

void AttributeTreeFilter::noteCreated(const QString& path)
{
    if (everything)
        return;
    // The topmost match counts: it is shown with all below it.
    for (int end = path.indexOf(QLatin1Char('.')); end > 0; end = path.indexOf(QLatin1Char('.'), end + 1)) {
        const QString ancestor = path.left(end);
        if (matches(ancestor)) {
            lead(ancestor);
            return;
        }
    }
    if (matches(path))
        lead(path);
}

void AttributeTreeFilter::noteRemoved(const TreeInterface& tree, const QStringList& paths)
{
    if (everything)
        return;
    QSet<QString> touched;
    for (const QString& path : paths) {
        const QStringList ancestors = ancestorPaths(path);
        touched.unite(QSet<QString>(ancestors.begin(), ancestors.end()).intersect(leading));
    }
    // What lies lower comes first, since it decides on what lies above it.
    QStringList lowestFirst = touched.values();
    std::sort(lowestFirst.begin(), lowestFirst.end(),
              [](const QString& a, const QString& b) { return a.size() > b.size(); });
    for (const QString& path : qAsConst(lowestFirst)) {
        if (children(tree, path).isEmpty())
            leading.remove(path);
    }
}

} // namespace Utilities::ModelViews
