#pragma once

#include <QStringList>

class QObject;

namespace Vantry {

// Files that list what the monitor is to watch, as it saves them: known by their ending, and no
// configuration. GUI thread.
class MonitorLists
{
public:
    // Takes them out of the names of files, which keep their order.
    static QStringList takeFrom(QStringList& files);

    // Has the monitor of that window watch what the list names. Gives why it does not; empty when it does.
    static QString show(const QString& list, const QObject& window);
};

} // namespace Vantry
