#pragma once

#include <QFileInfo>
#include <QString>

#include <functional>

namespace Vantry {

// Answer of the system to the question which file this code was loaded from.
struct ModuleFileName
{
    QString path; // empty when it could not be found out
    quint32 error = 0;
};

using ModuleFileLookup = std::function<ModuleFileName()>;

// Asks the system for the file of the module that this function is part of.
ModuleFileName lookUpModuleFile();

// The module's own file. An answer without a path is logged and gives an empty file.
QFileInfo moduleFile(const ModuleFileLookup& lookup);

} // namespace Vantry
