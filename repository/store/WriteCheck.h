#pragma once

#include "host/FrameworkCore/AppConfig/Outcome.h"
#include "repository/store/AttributeTree.h"

namespace Repository {

// What may be done with a node now: of a locked backend it may be read at most.
FrameworkCore::AppConfig::AccessMode presentAccess(const Node& node);

// Whether an attribute takes a value: it may be written, the value becomes one of its type without loss, and
// its validations let that pass. Gives what the attribute would hold. The attribute's lock is held.
FrameworkCore::AppConfig::Outcome acceptWrite(const Node& node, const QVariant& value, QVariant& accepted);

// The same for a value of any type, which becomes that of the attribute.
FrameworkCore::AppConfig::Outcome acceptRetyped(const Node& node, const QVariant& value, QVariant& accepted);

// Whether a new attribute may have this value, in that backend, which is null in memory. The node is null
// where none is there yet. The structure lock is held.
FrameworkCore::AppConfig::Outcome acceptNew(AttributeTree& tree, const NodeIndex::Key& key, const Node* node,
                                            const Backend* backend, const QVariant& value);

} // namespace Repository
