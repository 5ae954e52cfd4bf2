#include "repository/backends/BackendKind.h"

#include "repository/common/RepositoryLog.h"

namespace Repository {

void BackendKind::report(const Outcome& outcome, const Observer& observer)
{
    logged(outcome);
    if (observer && !outcome.isPlainSuccess())
        observer(outcome);
}

} // namespace Repository
