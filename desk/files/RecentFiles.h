#pragma once

#include <QStringList>

namespace Vantry {

// The configuration files, and stores, that were opened last, from one start to the next. GUI thread.
class RecentFiles
{
public:
    // Absolute paths, the newest first; they may be gone by now.
    static QStringList get();

    static void add(const QStringList& files);
    static void clear();

    // Whether it is the location of a store, and no file.
    static bool isStore(const QString& file);

    // The path for people: the user's own folder is written short.
    static QString shownPath(const QString& file);
};

} // namespace Vantry
