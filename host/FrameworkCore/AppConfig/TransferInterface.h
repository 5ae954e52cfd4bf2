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
    // a file has no place for the node's own value, they begin with the node's name. Type tags are those of
    // such files, and groups without entries are left out where these have no place for them. Attributes and
    // texts of xml are plain members of json, and "$names" at its end says so. The empty path exports
    // everything but what is the repository's own.
    virtual Outcome exportTree(const QString& path, const QString& type, QByteArray& text) = 0;

    // Creates the attributes of such a text below `path`; those that exist already are written. A text that
    // is none of that type gives BackendFailure, with line, column and reason in the log.
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
