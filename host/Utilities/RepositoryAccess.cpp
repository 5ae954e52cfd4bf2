#include "host/Utilities/RepositoryAccess.h"

#include <mutex>

namespace Utilities {

using FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

namespace {

struct Access
{
    std::mutex mutex;
    std::shared_ptr<RepositoryInterface> repository;
};

Access& access()
{
    static Access one;
    return one;
}

} // namespace

std::shared_ptr<RepositoryInterface> GetAppConfigRepositoryInterface()
{
    const std::lock_guard<std::mutex> guard(access().mutex);
    return access().repository;
}

void SetAppConfigRepositoryInterface(std::shared_ptr<RepositoryInterface> repository)
{
    // The earlier repository goes with the argument, after the lock: its end may call back in here.
    const std::lock_guard<std::mutex> guard(access().mutex);
    access().repository.swap(repository);
}

} // namespace Utilities
