#pragma once

#include <QString>

namespace Vantry {

// Whether a plug-in is only this person's own, the administrator's or the owner's of this program. Who may
// write into a folder above the program could replace the program itself, so those are not judged. Any
// thread.
class PluginPlace
{
public:
    // Empty, or what else other users can change: the file, or a folder or link on the way to it.
    static QString findFault(const QString& file);
};

} // namespace Vantry
