#pragma once

#include "repository/backends/BackendKind.h"
#include "repository/fleet/StoreContext.h"

#include <QMap>
#include <QString>

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <vector>

namespace Repository {

class EtcdBackend;
struct AttributeTree;

// Brings what a store tells into the tree, on a thread of its own, so that whoever reads from the store never
// waits for those that are notified. Any thread, but run.
class StoreApplier
{
public:
    // It keeps neither of them alive.
    StoreApplier(StoreContext& storeContext, std::weak_ptr<AttributeTree> attributes,
                 std::weak_ptr<EtcdBackend> storeBackend);

    struct News
    {
        enum class Kind {
            Begin, // of the pages of all that the store holds
            Page,
            Loaded, // that was the last page
            Events, // of one revision
            Link    // is another one
        };

        Kind kind = Kind::Link;
        std::int64_t revision = 0; // of events, and of what was loaded
        std::vector<SharedEntries::Arrival> arrivals;
        QMap<QString, QString> users; // by session; empty for one that is gone
    };

    // Pages wait while there are many already.
    void push(News news);

    // Until the end.
    void run();
    void stop();

private:
    bool takeAtOnce(const News& news);
    void takeEchoes(const News& news);
    void apply(News news);
    void begin();
    void applyPage(News& news);
    void applyLoaded(const News& news);
    void applyEvents(const News& news);
    void takeUsers(const QMap<QString, QString>& users);
    void publish();

    StoreContext& context; // not owned
    const std::weak_ptr<AttributeTree> tree;
    const std::weak_ptr<EtcdBackend> backend;
    std::vector<SharedEntries::Arrival> reloaded; // so far; the thread's own, as the next
    QMap<QString, QString> reloadedUsers;

    std::mutex mutex; // guards what follows
    std::condition_variable changed;
    std::deque<News> waiting;
    bool isApplying = false;
    bool isStopping = false;
};

} // namespace Repository
