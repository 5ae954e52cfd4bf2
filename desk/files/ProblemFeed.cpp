#include "desk/files/ProblemFeed.h"

namespace Vantry {

ProblemFeed& ProblemFeed::instance()
{
    static ProblemFeed feed;
    return feed;
}

void ProblemFeed::add(const Outcome& outcome)
{
    const auto& parts = outcome.get();
    const bool isOfOpening = outcome.ok() || parts.operation == Outcome::Operation::CreateBackend;
    if (isOfOpening && !parts.file.isEmpty())
        QMetaObject::invokeMethod(
            this, [this, outcome] { emit added(outcome); }, Qt::QueuedConnection);
}

} // namespace Vantry
