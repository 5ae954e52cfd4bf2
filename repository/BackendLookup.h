#pragma once

#include <QString>

#include <memory>

namespace Repository {

class AttributeStore;
class Backend;

// The backend of that name; null when there is none.
std::shared_ptr<Backend> findBackend(AttributeStore& store, const QString& name);

// The backend that the path belongs to, that with the longest root; null in memory.
std::shared_ptr<Backend> backendOf(AttributeStore& store, const QString& path);

} // namespace Repository
