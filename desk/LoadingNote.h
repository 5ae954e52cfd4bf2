#pragma once

#include <QString>

namespace Vantry {

// A note on disk of the plug-in that is being loaded or is making its applications, for as long as this
// lives. Should the plug-in end the process, the note stays, and the next start knows the culprit. One at a
// time.
class LoadingNote
{
public:
    explicit LoadingNote(const QString& file);
    ~LoadingNote();
    Q_DISABLE_COPY(LoadingNote)

    // The file during whose loading the last start died; empty when it did not. Forgets it.
    static QString takeCulprit();

private:
    const QString note; // the file that holds it
};

} // namespace Vantry
