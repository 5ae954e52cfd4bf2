#pragma once

#include <QString>

#include <memory>
#include <vector>

namespace Repository {

struct AttributeTree;
class Backend;

// The backend of that name; null when there is none.
std::shared_ptr<Backend> findBackend(AttributeTree& tree, const QString& name);

// The backend that the path belongs to, that with the longest root; null in memory.
std::shared_ptr<Backend> backendOf(AttributeTree& tree, const QString& path);

// The backends that hold something at or below the path, or that the path lies in; all for the empty path.
std::vector<std::shared_ptr<Backend>> backendsTouching(AttributeTree& tree, const QString& path);

// A path as people read it, with the names of files and folders as they are on the disk.
QString readablePath(AttributeTree& tree, const QString& path);

} // namespace Repository
