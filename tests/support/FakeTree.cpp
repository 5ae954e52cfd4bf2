#include "tests/support/FakeTree.h"

#include "host/FrameworkCore/AppConfig/PathPattern.h"

namespace TestSupport {

FakeNode* FakeTree::find(const QString& path)
{
    const auto found = nodes.find(path);
    return found == nodes.end() ? nullptr : &found.value();
}

const FakeNode* FakeTree::find(const QString& path) const
{
    const auto found = nodes.constFind(path);
    return found == nodes.constEnd() ? nullptr : &found.value();
}

FakeNode& FakeTree::reach(const QString& path)
{
    if (!path.isEmpty() && !nodes.contains(path))
        reach(parentOf(path)).children.append(nameOf(path));
    return nodes[path];
}

QStringList FakeTree::remove(const QString& path, const QStringList& groupsToKeep)
{
    QStringList attributes;
    take(path, attributes);
    QString gone = path;
    while (!gone.isEmpty()) {
        const QString parent = parentOf(gone);
        FakeNode& parentNode = nodes[parent];
        parentNode.children.removeOne(nameOf(gone));
        if (parent.isEmpty() || parentNode.isAttribute || !parentNode.children.isEmpty() ||
            groupsToKeep.contains(parent))
            break;
        nodes.remove(parent);
        gone = parent;
    }
    return attributes;
}

void FakeTree::take(const QString& path, QStringList& attributes)
{
    const FakeNode node = nodes.take(path);
    if (node.isAttribute)
        attributes.append(path);
    for (const QString& name : node.children)
        take(childPath(path, name), attributes);
}

QStringList FakeTree::findPaths(const FrameworkCore::AppConfig::Interfaces::PathSearch& search) const
{
    const FrameworkCore::AppConfig::PathPattern pattern(search.pattern, search.caseSensitivity);
    QStringList found;
    QStringList level{QString()};
    while (!level.isEmpty()) {
        QStringList next;
        for (const QString& path : qAsConst(level)) {
            const bool matches = !path.isEmpty() && pattern.matches(path);
            if (matches && found.size() == search.limit)
                return found;
            if (matches)
                found.append(path);
            if (matches && search.topmostOnly)
                continue;
            const QStringList children = nodes.value(path).children;
            for (const QString& name : children)
                next.append(childPath(path, name));
        }
        level = next;
    }
    return found;
}

bool FakeTree::isValidPath(const QString& path) const
{
    const QStringList components = separator.isEmpty() ? QStringList{path} : path.split(separator);
    return !components.contains(QString()) && !path.contains(QLatin1Char('*'));
}

bool FakeTree::isAtOrBelow(const QString& path, const QString& root) const
{
    return path == root || (!separator.isEmpty() && path.startsWith(root + separator));
}

QString FakeTree::nameOf(const QString& path) const
{
    const int end = separator.isEmpty() ? -1 : path.lastIndexOf(separator);
    return end < 0 ? path : path.mid(end + separator.size());
}

QString FakeTree::childPath(const QString& parent, const QString& name) const
{
    return parent.isEmpty() ? name : parent + separator + name;
}

QString FakeTree::parentOf(const QString& path) const
{
    return separator.isEmpty() ? QString() : path.left(qMax(0, path.lastIndexOf(separator)));
}

} // namespace TestSupport
