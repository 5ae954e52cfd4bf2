#pragma once

#include <QStringList>

namespace Vantry {

// What was unsaved when the program was told to end and nobody could be asked: a diff for each file, which
// the program "patch" puts in, below the folder in which a person's programs keep their state. GUI thread.
class KeptChanges
{
public:
    // Keeps the diff of a file, whose name has no folder. Gives where it is, on the disk; when that fails
    // nothing, and the reason.
    static QString keep(const QString& fileName, const QString& diff, QString& error);

    // What is kept from earlier, each as a text for the person, who removes the file in the end.
    static QStringList getNotices();
};

} // namespace Vantry
