#pragma once

#include "host/FrameworkCore/AppConfig/Outcome.h"

#include <QVariant>

#include <memory>

namespace Repository {

struct AttributeTree;
class Backend;
class History;

// Puts backends into the tree, takes them out again and publishes which there are. Any thread.
class Mounts
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using StatusCode = FrameworkCore::AppConfig::StatusCode;

    Mounts(AttributeTree& attributes, History& steps) : tree(attributes), history(steps) {}

    // Gives the backend its root and the entries of its document.
    Outcome mount(const std::shared_ptr<Backend>& backend);

    // Closes the backend and takes it out of the tree; groups that lead to backends mounted below it stay.
    Outcome unmount(const std::shared_ptr<Backend>& backend, bool discardChanges);

    // Sets an attribute of the repository's own, which callers may only read; an invalid value makes it null.
    void publish(const QString& path, const QVariant& value);

private:
    AttributeTree& tree;
    History& history;
};

} // namespace Repository
