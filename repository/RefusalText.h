#pragma once

#include "repository/Node.h"

#include <QString>
#include <QVariant>

namespace Repository {

// What the log says of refused values, in words for the person who meant the change: the path, the value, why
// it was refused and what would not be. Values of write-only attributes are never told, and long ones are
// shortened. Any thread.
class RefusalText
{
public:
    // The whole line: that the path was not set to the value, and why. A value that is hidden is left out.
    static QString ofValue(const QString& path, const QVariant& value, bool isHidden, const QString& reason);

    // That the backend's file was not written, and why.
    static QString unsaved(const QString& backend, const QString& reason);

    // What such lines are about, by their beginnings; empty for any other line, and where the path is so long
    // that the line gives its ends only.
    static QString pathOf(const QString& line);
    static QString unsavedBackendOf(const QString& line);

    // The reasons. A document's own, which may quote the value, is replaced when that is hidden.
    static QString wrongType(const QVariant& value, int wantedType);
    static QString noAttributeType();
    static QString readOnly(const Node& node);
    static QString readOnly(const Backend& backend);
    static QString unfit(const QVariant& value, bool isHidden, const QString& documentReason);
    static QString notFound();
    static QString invalidPath(QStringView path);
    static QString ownTree();

    // The value in quotes and what it is, as in "'1.5' (a number)".
    static QString shown(const QVariant& value);

    // The path, of a very long one its ends.
    static QString shownPath(const QString& path);

    // Of a text at most what a person reads, on one line.
    static QString shortened(const QString& text);
};

} // namespace Repository
