#pragma once

#include <QString>

class QMainWindow;

namespace Vantry {

// Remembers, from one start to the next, how the user left the window and the pages. GUI thread.
class WindowMemory
{
public:
    // Size, place and state of the window, every splitter in it that has a name, and which of the window's
    // own named actions are checked.
    static void save(const QMainWindow& window);
    static void restore(QMainWindow& window);

    // The page that an application showed last; empty when none is remembered.
    static void savePage(const QString& application, const QString& page);
    static QString getPage(const QString& application);
};

} // namespace Vantry
