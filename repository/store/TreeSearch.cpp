#include "repository/store/TreeSearch.h"

#include "host/FrameworkCore/AppConfig/PathPattern.h"
#include "repository/common/PathRules.h"

#include <deque>

namespace Repository {

namespace {

// Whether a match can lie at the path or below it, given the text that every match begins with.
bool canLeadTo(QStringView path, const QString& start, Qt::CaseSensitivity sensitivity)
{
    if (path.size() >= start.size())
        return path.left(start.size()).compare(start, sensitivity) == 0;
    return start[int(path.size())] == pathSeparator &&
           path.compare(start.leftRef(int(path.size())), sensitivity) == 0;
}

// Which children of the node can match the pattern, or have somebody below them that does.
NameFilter candidates(const Node& node, const QString& start, const QString& end)
{
    const int nameBegin = node.path.isEmpty() ? 0 : node.path.size() + 1;
    if (start.size() > nameBegin) {
        const QStringView rest = QStringView(start).mid(nameBegin);
        const qsizetype nameEnd = rest.indexOf(pathSeparator);
        return nameEnd < 0 ? NameFilter::beginning(rest) : NameFilter::name(rest.left(nameEnd));
    }
    const int lastName = end.lastIndexOf(pathSeparator);
    return lastName < 0 ? NameFilter::everything()
                        : NameFilter::name(QStringView(end).mid(lastName + 1)).orBranches();
}

} // namespace

QStringList findPaths(const Node& top, const FrameworkCore::AppConfig::Interfaces::PathSearch& search,
                      const std::function<const Node*(QStringView)>& nodeOf)
{
    const FrameworkCore::AppConfig::PathPattern pattern(search.pattern, search.caseSensitivity);
    const QString& start = pattern.getLiterals().first();
    const QString& end = pattern.getLiterals().last();

    // The names that the pattern spells out need no search where case counts.
    const Node* first = &top;
    const QStringView firstPath = parentPath(start);
    if (search.caseSensitivity == Qt::CaseSensitive && !firstPath.isEmpty())
        first = nodeOf(firstPath);

    QStringList found;
    std::deque<const Node*> walk;
    if (first)
        walk.push_back(first);
    for (; !walk.empty() && found.size() != search.limit; walk.pop_front()) {
        const Children* children = walk.front()->children.get();
        if (!children)
            continue;
        children->visit(candidates(*walk.front(), start, end), [&](const Node& child) {
            if (!canLeadTo(child.path, start, search.caseSensitivity))
                return true;
            const bool isMatch = pattern.matches(child.path);
            if (isMatch)
                found.append(child.path);
            if (child.children && !(isMatch && search.topmostOnly))
                walk.push_back(&child);
            return found.size() != search.limit;
        });
    }
    return found;
}

} // namespace Repository
