#pragma once

#include <QStringList>

#include <memory>
#include <mutex>
#include <vector>

namespace Repository {

struct AttributeTree;
class Backend;

// While it exists, the backends that the paths touch neither save nor look at their files, so that a change
// of several documents can be taken back. Made before any lock of the store is taken; it waits for saves
// under way. One thread.
class FileHold
{
public:
    FileHold(AttributeTree& tree, const QStringList& paths);

private:
    std::vector<std::shared_ptr<Backend>> backends;
    std::vector<std::unique_lock<std::mutex>> locks; // in the order of the backends' addresses
};

} // namespace Repository
