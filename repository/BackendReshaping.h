#pragma once

#include "repository/Backend.h"

#include <memory>
#include <vector>

namespace Repository {

class AttributeStore;
class TreeEdit;

// Makes changes of a backend's document in one piece with those of the tree. Its end tells the watchers, so
// it outlives the operation that it is given to and every lock of it. One thread.
class BackendReshaping
{
public:
    BackendReshaping(AttributeStore& store, Backend& backend);
    ~BackendReshaping();
    Q_DISABLE_COPY(BackendReshaping)

    void operator()(const std::function<void()>& change);

private:
    AttributeStore& store;
    Backend& backend;
    std::vector<std::unique_ptr<TreeEdit>> done; // their locks are released, their news not yet told
};

} // namespace Repository
