#pragma once

#include <QStringList>

namespace Vantry {

// A note on disk of the plug-ins that the desk is calling, for as long as this lives; the last of several
// notes counts. Should one of the plug-ins end the process, the note stays, and the next start knows who it
// may have been. GUI thread.
class LoadingNote
{
public:
    explicit LoadingNote(const QStringList& files);
    ~LoadingNote();
    Q_DISABLE_COPY(LoadingNote)

    // The files that a process noted which has died since. Forgets them.
    static QStringList takeCulprits();

    // For a process that is there to die of a plug-in: no note of it is kept.
    static void keepNone();

private:
    const QStringList outer; // what was noted before
};

} // namespace Vantry
