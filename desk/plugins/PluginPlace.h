#pragma once

#include <QString>

namespace Vantry {

// Empty when a plug-in is only this person's own, the administrator's or the owner's of this program;
// otherwise what other users can change: the file, or a folder or link on the way to it. Who may write into a
// folder above the program could replace the program itself, so those are not judged. Any thread.
QString faultOfPluginPlace(const QString& file);

} // namespace Vantry
