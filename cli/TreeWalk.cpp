#include "cli/TreeWalk.h"

#include "host/FrameworkCore/AppConfig/PathPattern.h"

namespace CommandLine {

using FrameworkCore::AppConfig::PathPattern;
using Tree = FrameworkCore::AppConfig::Interfaces::TreeInterface;

void visitBelow(const Tree& tree, const QString& fullPath,
                const std::function<bool(const QString& fullPath)>& visitor)
{
    const auto children = tree.getChildren(fullPath);
    for (const auto& child : children) {
        const QString path = FrameworkCore::AppConfig::joinedPath(fullPath, child.name);
        if (visitor(path) && child.childCount > 0)
            visitBelow(tree, path, visitor);
    }
}

QStringList findMatches(const Tree& tree, const Source& source, const QString& pattern, bool topmostOnly)
{
    const QString fullPattern = source.fullPath(pattern);
    const PathPattern wanted(fullPattern);
    if (!wanted.hasWildcard())
        return fullPattern != source.root && tree.getNodeInformation(fullPattern).exists
                   ? QStringList(fullPattern)
                   : QStringList();
    QStringList found;
    visitBelow(tree, source.root, [&](const QString& path) {
        const bool matches = wanted.matches(path);
        if (matches)
            found.append(path);
        return !(matches && topmostOnly);
    });
    return found;
}

} // namespace CommandLine
