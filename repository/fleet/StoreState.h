#pragma once

#include "host/FrameworkCore/AppConfig/Outcome.h"
#include "repository/fleet/SharedEntries.h"
#include "repository/fleet/StoreTransport.h"

#include <QDateTime>
#include <QMap>
#include <QString>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

namespace Repository {

// What a backend of a store and its connection share. Any thread; the mutex guards all of it.
struct StoreState
{
    enum class Link {
        Loading,   // for the first time
        Connected, // news come, and edits go
        Stale,     // entries are as they were when the connection was lost
        Refused    // as Stale, and the store says why: waiting alone does not help
    };

    // One way of the connection, that of news or that of edits.
    struct Way
    {
        bool isOpen = false;
        bool isRefused = false;
        QString reason; // while it is not open
    };

    using Outcome = FrameworkCore::AppConfig::Outcome;

    // Opens a way, or closes it with the result of a failed call. Gives whether there is something else to
    // say of the link.
    bool open(Way& way);
    bool close(Way& way, const StoreResult& result);

    bool isConnected() const { return link == Link::Connected; }

    // Whether the link is down for longer than the store's servers take to agree anew on who leads them.
    bool isDownForLong() const;

    // Whether waiting for the link is in vain: it is down for long, or the store refuses it.
    bool isAway() const { return link == Link::Refused || isDownForLong(); }

    // In a few words, as "connected" or "stale since 2026-11-26T12:00:00: connection refused".
    QString describeLink() const;

    // Why the link is down, and how old values are by now.
    QString explainDown() const;

    // Refused, with the reason, where edits are not taken now. A short interruption, as when the store's
    // servers agree anew on who leads them, refuses none.
    Outcome checkWritable() const;

    // Everything is here for the first time. Gives whether the link is another one.
    bool finishLoading();

    mutable std::mutex mutex;
    std::condition_variable changed; // of all that follows, apart from edits that come
    std::condition_variable work;    // there may be something to send

    SharedEntries entries;
    Link link = Link::Loading;
    QDateTime since;                                                                // of the link, for people
    std::chrono::steady_clock::time_point began = std::chrono::steady_clock::now(); // the same, for programs
    Way news;
    Way edits{true, false, {}};
    bool isStopping = false;
    bool isLoaded = false;
    bool isSending = false; // something is on its way to the store
    int savers = 0;         // who wait for their edits to be acknowledged

    // Sends on the calling thread what there is, if nobody sends; the mutex is given up meanwhile. Gives
    // whether there was something. Nothing before there is a connection.
    std::function<bool(std::unique_lock<std::mutex>& lock)> sendNow;

    bool queues = false;  // edits are taken while the link is down
    QString writeRefusal; // why the store did not take edits; empty when they are to be tried again
    int loaded = 0;       // entries, while loading
    int toLoad = 0;
    std::size_t failedAttempts = 0; // to load for the first time
    QMap<QString, QString> users;   // who has the store open, by session

private:
    bool updateLink();
};

} // namespace Repository
