#pragma once

#include <QStringList>

namespace Vantry {

// The names of files for people, in the order of the paths: each with as many of its folders as distinguish
// it from the others ("plant.json", "left/limits.ini", "right/limits.ini"). Any thread.
QStringList distinctFileNames(const QStringList& paths);

} // namespace Vantry
