#pragma once

#include "host/HostExport.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>

#include <functional>
#include <memory>
#include <mutex>
#include <utility>

namespace Utilities {

// Brings what any thread puts in to the thread of this object: the first in the next turn of the event loop,
// what follows no sooner than a pause after the last delivery. All that is put in meanwhile is one delivery.
// May be destroyed while others put in, and by its own handler.
class VANTRY_HOST_EXPORT PacedInbox : public QObject
{
public:
    static constexpr qint64 shortestPause = 16; // milliseconds; a screen shows no more
    static constexpr qint64 longestPause = 400;

    // What those who put in share with the inbox, beside contents of its own; it outlives the inbox. Any
    // thread.
    class Shared
    {
    public:
        // Has the contents changed under the lock, then taken soon. Once the inbox is closed nothing is
        // changed any more.
        template <typename Change>
        void put(const Change& change)
        {
            const std::lock_guard<std::mutex> guard(mutex);
            if (!inbox)
                return;
            change();
            if (!std::exchange(isAnnounced, true))
                inbox->announce();
        }

        // Has the contents taken under the lock. From here on what is put in announces itself again.
        template <typename Take>
        auto take(const Take& takeContents)
        {
            const std::lock_guard<std::mutex> guard(mutex);
            isAnnounced = false;
            return takeContents();
        }

    private:
        friend class PacedInbox;

        std::mutex mutex;            // guards all below, and the contents
        PacedInbox* inbox = nullptr; // not owned; none when it is closed
        bool isAnnounced = false;
    };

    // The handler takes the contents and delivers them. The pause, in milliseconds, is asked for when there
    // is something to deliver.
    explicit PacedInbox(
        std::function<void()> handler, std::function<qint64()> pause = [] { return shortestPause; });
    ~PacedInbox() override { close(); }

    void open(const std::shared_ptr<Shared>& contents); // instead of those before
    void close();                                       // nothing more is delivered

    void requestDelivery(); // in a later turn, also when nothing is put in
    void deliverNow();
    void beginPause() { sinceDelivery.start(); } // anew, for a handler that takes long

protected:
    void customEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void announce();
    void deliverInTime();

    const std::function<void()> handler;
    const std::function<qint64()> pause;
    std::shared_ptr<Shared> shared;
    QBasicTimer timer;
    QElapsedTimer sinceDelivery; // or since the pause began anew
};

} // namespace Utilities
