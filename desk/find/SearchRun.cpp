#include "desk/find/SearchRun.h"

#include "host/Utilities/Worker.h"

#include <algorithm>
#include <atomic>

namespace Vantry {

using FrameworkCore::AppConfig::StatusCode;

struct SearchRun::State : Utilities::PacedInbox::Shared
{
    std::atomic<bool> isStopped{false};

    // Guarded by it.
    QVector<SearchHit> hits; // that are not delivered yet
    bool isDone = false;
    Outcome outcome;
};

SearchRun::SearchRun(std::shared_ptr<SearchInterface> searched, QObject* parent)
    : QObject(parent), search(std::move(searched)), inbox([this] { deliver(); })
{
}

SearchRun::~SearchRun()
{
    stop();
}

void SearchRun::stop()
{
    inbox.close();
    if (state)
        state->isStopped = true;
    state.reset();
    dropEnded();
}

// Only those are waited for that are still at work when this goes.
void SearchRun::dropEnded()
{
    const auto hasEnded = [](const std::future<void>& worker) {
        return worker.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    };
    workers.erase(std::remove_if(workers.begin(), workers.end(), hasEnded), workers.end());
}

void SearchRun::start(const SearchQuery& query)
{
    stop();
    state = std::make_shared<State>();
    inbox.open(state);
    QString failure;
    auto worker = Utilities::startWorker(
        [interface = search, query, shared = state] {
            Outcome outcome;
            try {
                outcome = interface->find(query, [&shared](const QVector<SearchHit>& hits, int) {
                    if (!hits.isEmpty())
                        shared->put([&] { shared->hits += hits; });
                    return !shared->isStopped;
                });
            } catch (...) {
                outcome = Outcome(StatusCode::NotEnoughMemory, Utilities::currentFailure());
            }
            shared->put([&] {
                shared->isDone = true;
                shared->outcome = outcome;
            });
        },
        failure);
    if (worker.valid()) {
        workers.push_back(std::move(worker));
        return;
    }
    stop();
    emit finished(Outcome(StatusCode::NotEnoughMemory, failure));
}

void SearchRun::deliver()
{
    const auto taken = state;
    QVector<SearchHit> hits;
    const bool isDone = taken->take([&] {
        hits.swap(taken->hits);
        return taken->isDone;
    });
    if (!hits.isEmpty())
        emit found(hits);
    if (!isDone || state != taken) // whoever got them may have stopped it
        return;
    const Outcome outcome = taken->outcome;
    stop();
    emit finished(outcome);
}

} // namespace Vantry
