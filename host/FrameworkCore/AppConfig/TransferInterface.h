#pragma once

#include "host/FrameworkCore/AppConfig/Outcome.h"
#include "host/FrameworkCore/AppConfig/TransferReport.h"
#include "host/FrameworkCore/CoreExport.h"

#include <QByteArray>
#include <QString>

namespace FrameworkCore::AppConfig::Interfaces {

// Whole subtrees at once: within the tree, between backends of different formats, and to and from texts. Each
// operation is one step of undo, and all or nothing: when one attribute is refused, nothing has changed, and
// the log says which one and why. Attributes that must not be read are left out. Any thread.
class VANTRY_CORE_EXPORT TransferInterface
{
public:
    virtual ~TransferInterface() = default;

    // Copies the node and all below it; `to` is the path of the copy. AlreadyExists when there is a node at
    // `to`, InvalidPath when it lies at or below `from`.
    virtual Outcome copyTree(const QString& from, const QString& to) = 0;

    // Gives the node and all below it another path. Refused as copyTree and removeTree are.
    virtual Outcome moveTree(const QString& from, const QString& to) = 0;

    // The subtree as the text of a file of that backend type. Paths in it are relative to `path`; where such
    // a file has no place for the node's own value, they begin with the node's name, except for that of a
    // backend, which is in no file. Type tags are those of such files. What their format has no form for is
    // written in encoded names, which the file says, and import, diff and export of it know: json by a member
    // "$names", ini and txt by the line "# @names encoded", xml by the instruction <?vantry names="encoded"?>
    // below whose element "root" the first element of an array is <_x0030_>. A json array is a group of 0, 1,
    // 2 ... in the other formats, and such a group an array of json; one of texts alone is a list. The empty
    // path exports everything but what is the repository's own.
    virtual Outcome exportTree(const QString& path, const QString& type, QByteArray& text) = 0;

    // Creates the attributes of such a text below `path`; those that exist already are written. Groups are
    // merged by name, but an array or list of the text replaces, whole and in every format, what is in its
    // place. A text that is none of that type gives BackendFailure, with line, column and reason in the log.
    virtual Outcome importTree(const QString& path, const QString& type, const QByteArray& text) = 0;

    // The same with a report. A cancelled one gives Cancelled, has changed nothing and is not logged. Those
    // of a repository that does not override them cannot be cancelled.
    virtual Outcome copyTree(const QString& from, const QString& to, TransferReport& /*report*/)
    {
        return copyTree(from, to);
    }
    virtual Outcome exportTree(const QString& path, const QString& type, QByteArray& text,
                               TransferReport& /*report*/)
    {
        return exportTree(path, type, text);
    }
    virtual Outcome importTree(const QString& path, const QString& type, const QByteArray& text,
                               TransferReport& /*report*/)
    {
        return importTree(path, type, text);
    }
};

} // namespace FrameworkCore::AppConfig::Interfaces
