#pragma once

#include "host/HostExport.h"

#include <QByteArray>
#include <QString>

namespace Utilities::ModelViews {

// Whole text files in UTF-8, over Files::FileSaver. Each operation gives an empty text, or why it failed: the
// file and the reason. Links are followed; what is not a regular file is refused without being opened. Any
// thread.
class VANTRY_HOST_EXPORT TextFile
{
public:
    // Who may read a file that is new; one that exists keeps its permissions.
    enum class Readers { Usual, OwnerOnly };

    // "\r\n" is read as "\n", a lone "\r" stays; a byte-order mark is left out. Refused are bytes that are no
    // text in UTF-8. A refusal leaves the text as it was.
    static QString read(const QString& name, QString& text);

    // Writes the text as it is, after a byte-order mark when it begins with one itself. At every moment the
    // old or the new content is there whole, and after a success the new one is on the disk. Owner,
    // permissions and extended attributes are kept.
    static QString write(const QString& name, const QString& text, Readers readers = Readers::Usual);

    // The same with bytes as they are, whatever their encoding.
    static QString readBytes(const QString& name, QByteArray& bytes);
    static QString writeBytes(const QString& name, const QByteArray& bytes, Readers readers = Readers::Usual);
};

} // namespace Utilities::ModelViews
