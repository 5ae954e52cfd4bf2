#pragma once

#include "host/HostExport.h"

#include <QByteArray>
#include <QString>

namespace Utilities::ModelViews {

// Whole text files in UTF-8. Each operation gives an empty text, or why it failed: the file and the system's
// reason. Links are followed; what is no regular file is refused without being opened. Any thread.
class VANTRY_HOST_EXPORT TextFile
{
public:
    // "\r\n" is read as "\n", a lone "\r" stays; a byte order mark is left out. Refused are bytes that are no
    // text in UTF-8 and more than 256 MiB. A refusal leaves the text as it was.
    static QString read(const QString& name, QString& text);

    // Writes the text as it stands. At every moment the old or the new content is there whole, and after a
    // success the new one is on the disk. Owner, permissions and extended attributes are kept as far as the
    // system allows it. A file of several names (hard links) keeps them all: it is written in place, so that
    // a crash in that moment may damage it; a refusal brings its old content back.
    static QString write(const QString& name, const QString& text);

    // The same with bytes as they are, whatever their encoding.
    static QString readBytes(const QString& name, QByteArray& bytes);
    static QString writeBytes(const QString& name, const QByteArray& bytes);
};

} // namespace Utilities::ModelViews
