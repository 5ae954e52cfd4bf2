#pragma once

#include "host/FrameworkCore/AppConfig/TreeInterface.h"

#include <QSet>
#include <QString>
#include <QStringList>

namespace Utilities::ModelViews {

// The attributes that a drop of paths adds to those that are watched already: each once, and in place of what
// has children the attributes there and below, in the order of the tree. A path that the tree does not know
// stays as it is. Without a tree all paths do.
QStringList droppedAttributes(const FrameworkCore::AppConfig::Interfaces::TreeInterface* tree,
                              const QStringList& paths, QSet<QString> watched);

} // namespace Utilities::ModelViews
