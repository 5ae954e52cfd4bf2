#pragma once

#include "host/FrameworkCore/AppConfig/Outcome.h"
#include "repository/store/Node.h"

namespace Repository {

// Whether an attribute takes a value: it may be written, the value becomes one of its type without loss, and
// its rules let that pass. Gives what the attribute would hold. The attribute's lock is held.
FrameworkCore::AppConfig::Outcome acceptWrite(const Node& node, const QVariant& value, QVariant& accepted);

} // namespace Repository
