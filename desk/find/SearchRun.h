#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"
#include "host/Utilities/PacedInbox.h"

#include <QObject>

#include <future>
#include <memory>
#include <vector>

namespace Vantry {

// Searches on another thread, and hands on what is found while it runs. Of several searches only the one that
// was started last is heard of. GUI thread.
class SearchRun : public QObject
{
    Q_OBJECT

public:
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using SearchHit = FrameworkCore::AppConfig::Interfaces::SearchHit;
    using SearchInterface = FrameworkCore::AppConfig::Interfaces::SearchInterface;
    using SearchQuery = FrameworkCore::AppConfig::Interfaces::SearchQuery;

    explicit SearchRun(std::shared_ptr<SearchInterface> search, QObject* parent = nullptr);
    ~SearchRun() override;

    void start(const SearchQuery& query); // in place of one that runs
    void stop();

    bool isRunning() const { return state != nullptr; }

signals:
    void found(const QVector<FrameworkCore::AppConfig::Interfaces::SearchHit>& hits); // some more
    void finished(const FrameworkCore::AppConfig::Outcome& outcome); // not of one that was stopped

private:
    struct State;

    void deliver();
    void dropEnded();

    std::shared_ptr<SearchInterface> search;
    std::shared_ptr<State> state;           // shared with the searching thread; null when none is heard of
    std::vector<std::future<void>> workers; // also of searches that are about to stop
    Utilities::PacedInbox inbox;
};

} // namespace Vantry
