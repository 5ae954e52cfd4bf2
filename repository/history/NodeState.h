#pragma once

#include "repository/store/Node.h"

namespace Repository {

struct AttributeTree;

// What history knows of one place of the tree at one moment.
struct NodeState
{
    bool isNode = false;
    bool isAttribute = false;
    FrameworkCore::AppConfig::AccessMode access = FrameworkCore::AppConfig::AccessMode::None;
    QVariant value; // of an attribute; invalid for null

    // Its value is carried nowhere.
    bool isHidden() const { return isAttribute && !FrameworkCore::AppConfig::isReadable(access); }

    std::size_t getSize() const; // in memory, about

    // Attribute lock held.
    static NodeState of(const Node& node);

    // Once a write of the attribute under way is done. The structure lock is held.
    static NodeState at(AttributeTree& tree, const QString& path);
};

// Whether both are the same attribute, or none, to a person and to a file: nan is nan, and types count.
bool isSameValue(const NodeState& a, const NodeState& b);

} // namespace Repository
