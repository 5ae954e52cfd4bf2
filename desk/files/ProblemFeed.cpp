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
            this, [this, outcome] { tell(outcome); }, Qt::QueuedConnection);
}

void ProblemFeed::tell(const Outcome& outcome)
{
    if (outcome.ok())
        problems.remove(outcome.get().file);
    else
        problems.insert(outcome.get().file, outcome);
    emit added(outcome);
}

} // namespace Vantry
