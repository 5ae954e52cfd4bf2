#pragma once

#include "host/FrameworkCore/AppConfig/TreeInterface.h"
#include "repository/store/Node.h"

#include <QStringList>

namespace Repository {

// Paths below the top that a search asks for, upper levels first. startingPoint gives the node of a path, or
// null. The structure lock is held. Only nodes that can lead to a match are walked.
QStringList findPaths(const Node& top, const FrameworkCore::AppConfig::Interfaces::PathSearch& search,
                      const std::function<const Node*(QStringView path)>& nodeOf);

} // namespace Repository
