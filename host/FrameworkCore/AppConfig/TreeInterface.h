#pragma once

#include "host/FrameworkCore/AppConfig/AccessMode.h"
#include "host/FrameworkCore/AppConfig/AttributePath.h"
#include "host/FrameworkCore/AppConfig/Outcome.h"
#include "host/FrameworkCore/CoreExport.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <algorithm>

namespace FrameworkCore::AppConfig::Interfaces {

// What is known of one node of the tree. A node may hold a value, children, or both.
struct NodeInformation
{
    bool exists = false;
    bool isAttribute = false; // it can be read and written; otherwise it only groups its children
    bool isBackendRoot = false;
    int childCount = 0;
    AccessMode accessMode = AccessMode::None;
    QString dataType; // Qt's type name; empty for a null attribute and for a mere group
    QString backend;  // name of the backend that owns the node; empty for memory
};

// A child as its parent lists it.
struct ChildInformation
{
    QString name;
    int childCount = 0; // of its own children
};

// How findPaths searches.
struct PathSearch
{
    QString pattern; // full paths are matched; "*" stands for any run of characters, separators included
    Qt::CaseSensitivity caseSensitivity = Qt::CaseSensitive;
    bool topmostOnly = false; // what lies below a match is left out
    int limit = -1;           // at most so many paths; negative for all
};

// The attributes as a tree. Any thread, also from inside an update callback. The empty path is the top.
class VANTRY_CORE_EXPORT TreeInterface
{
public:
    virtual ~TreeInterface() = default;

    // Names of the children, in the order of their file, or in memory of their creation; empty for an unknown
    // path.
    virtual QStringList getChildNames(const QString& path) const = 0;

    // The number of children; 0 for an unknown path.
    virtual int getChildCount(const QString& path) const = 0;

    // The children with the numbers of theirs, in the same order, all of one moment; a repository that does
    // not override it looks at them one after the other.
    virtual QVector<ChildInformation> getChildren(const QString& path) const
    {
        QVector<ChildInformation> children;
        const QStringList names = getChildNames(path);
        for (const QString& name : names)
            children.append({name, getChildCount(joinedPath(path, name))});
        return children;
    }

    virtual NodeInformation getNodeInformation(const QString& path) const = 0;

    // Paths of the nodes that match, attributes and groups alike, upper levels before lower ones.
    virtual QStringList findPaths(const PathSearch& search) const = 0;

    // Removes the node and all below it, in the files of backends too, and notifies the watchers of every
    // attribute. Refused, with the reason in the log: "internal", a backend's root, what holds one, what is
    // not writable.
    virtual Outcome removeTree(const QString& path) = 0;

    // As getChildren, but only those whose names begin with the text, in its case; a repository that does not
    // override it looks at all children.
    virtual QVector<ChildInformation> getChildrenBeginningWith(const QString& path,
                                                               const QString& beginning) const
    {
        QVector<ChildInformation> children = getChildren(path);
        children.erase(std::remove_if(children.begin(), children.end(),
                                      [&beginning](const ChildInformation& child) {
                                          return !child.name.startsWith(beginning);
                                      }),
                       children.end());
        return children;
    }

    // The last of getChildNames, at most so many; a repository that does not override it looks at all
    // children.
    virtual QStringList getLastChildNames(const QString& path, int count) const
    {
        const QStringList names = getChildNames(path);
        return names.mid(std::max(0, names.size() - count));
    }
};

} // namespace FrameworkCore::AppConfig::Interfaces
