#include "cli/PathHint.h"

#include "cli/Suggestion.h"
#include "cli/Texts.h"

#include <QRegularExpression>

namespace CommandLine {

using FrameworkCore::AppConfig::joinedPath;

namespace {

using Tree = FrameworkCore::AppConfig::Interfaces::TreeInterface;

// The path as other programs write it, made one of ours: $.a, .a, a/b, a[0], a["b"] and a[].
QString translated(QString path)
{
    static const QRegularExpression quotedName(QStringLiteral("\\[([\"'])(.*?)\\1\\]"));
    static const QRegularExpression index(QStringLiteral("\\[(\\d*)\\]"));
    path.replace(quotedName, QStringLiteral(".\\2")).replace(index, QStringLiteral(".\\1"));
    if (path.startsWith(QLatin1String("$.")))
        path.remove(0, 1);
    return path.replace(QLatin1Char('/'), QLatin1Char('.'))
        .split(QLatin1Char('.'), Qt::SkipEmptyParts)
        .join(QLatin1Char('.'));
}

// Looks where the path leaves the tree.
class NearestPath
{
public:
    NearestPath(const Tree& searchedTree, const Source& searched, const QString& path)
        : tree(searchedTree), source(searched), parent(searched.root),
          names(path.split(QLatin1Char('.'), Qt::SkipEmptyParts))
    {
        while (!names.isEmpty() && exists(joinedPath(parent, names.first())))
            parent = joinedPath(parent, names.takeFirst());
    }

    // The path with a "." that belongs to a name, as in versions.1%2E2; empty when that is not it.
    QString withDotsInName() const
    {
        QString name = names.value(0);
        for (int count = 1; count < names.size(); ++count) {
            name += QStringLiteral("%2E") + names.at(count);
            const QString path = joinedPath(joinedPath(parent, name),
                                            QStringList(names.mid(count + 1)).join(QLatin1Char('.')));
            if (exists(path))
                return source.relativePath(path);
        }
        return {};
    }

    QString nearestName() const
    {
        const QString prefix =
            parent == source.root ? QString() : source.relativePath(parent) + QLatin1Char('.');
        return suggestionFor(names.value(0), tree.getChildNames(parent), prefix);
    }

    // The only path with that end, wherever it is; empty when there are several.
    QString elsewhere() const
    {
        const QString end = names.join(QLatin1Char('.'));
        if (parent != source.root || end.isEmpty())
            return {};
        const QStringList found =
            tree.findPaths({source.fullPath(QStringLiteral("*.") + end), Qt::CaseSensitive, false, 2});
        return found.size() == 1 ? source.relativePath(found.first()) : QString();
    }

private:
    bool exists(const QString& path) const { return tree.getNodeInformation(path).exists; }

    const Tree& tree;     // not owned
    const Source& source; // not owned
    QString parent;       // the lowest that there is
    QStringList names;    // below it
};

QString asQuestion(const QString& path)
{
    return path.isEmpty() ? QString() : Texts::tr("; did you mean '%1'?").arg(path);
}

} // namespace

QString hintForPath(const Tree& tree, const Source& source, const QString& path)
{
    if (path.contains(QLatin1Char('*')))
        return Texts::tr("; 'vantry find' prints what a pattern matches");
    const QString plain = translated(path);
    if (plain != path && !plain.isEmpty() && tree.getNodeInformation(source.fullPath(plain)).exists)
        return asQuestion(plain);
    const NearestPath nearest(tree, source, plain);
    QString hint = asQuestion(nearest.withDotsInName());
    if (hint.isEmpty())
        hint = nearest.nearestName();
    return hint.isEmpty() ? asQuestion(nearest.elsewhere()) : hint;
}

} // namespace CommandLine
