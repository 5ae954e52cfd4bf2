#pragma once

#include <QString>

#include <memory>
#include <vector>

namespace Repository {

class AttributeStore;
class Backend;

// The backend of that name; null when there is none.
std::shared_ptr<Backend> findBackend(AttributeStore& store, const QString& name);

// The backend that the path belongs to, that with the longest root; null in memory.
std::shared_ptr<Backend> backendOf(AttributeStore& store, const QString& path);

// The backends that hold something at or below the path, or that the path lies in; all for the empty path.
std::vector<std::shared_ptr<Backend>> backendsTouching(AttributeStore& store, const QString& path);

} // namespace Repository
