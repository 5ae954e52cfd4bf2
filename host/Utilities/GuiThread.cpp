#include "host/Utilities/GuiThread.h"

#include <QCoreApplication>
#include <QEvent>
#include <QThread>

#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <utility>

namespace Utilities {

namespace {

// A function on its way to the GUI thread while its caller waits.
class Call
{
public:
    explicit Call(const std::function<void()>& calledFunction) : function(calledFunction) {}

    void run()
    {
        wasCalled = true;
        try {
            function();
        } catch (...) {
            failure = std::current_exception(); // must not pass through Qt's event loop
        }
    }

    void finish()
    {
        const std::lock_guard<std::mutex> guard(mutex);
        isOver = true;
        changed.notify_all();
    }

    void waitForEnd()
    {
        std::unique_lock<std::mutex> guard(mutex);
        changed.wait(guard, [this] { return isOver; });
        if (failure)
            std::rethrow_exception(std::exchange(failure, nullptr));
        if (!wasCalled)
            throw std::runtime_error("the application ended before its GUI thread could do the work");
    }

private:
    const std::function<void()>& function; // the caller's
    std::exception_ptr failure;
    bool wasCalled = false;
    bool isOver = false;
    std::mutex mutex;
    std::condition_variable changed;
};

// Functions that the GUI thread is to call, one for each event that it gets. The events carry nothing, so
// that all that threads share is read under our own lock. There is one queue as long as there is one
// application.
class GuiQueue : public QObject
{
public:
    static void post(std::function<void()> function)
    {
        const std::lock_guard<std::mutex> guard(access().mutex);
        QCoreApplication* const application = QCoreApplication::instance();
        if (!application || QCoreApplication::closingDown())
            return;
        std::unique_ptr<GuiQueue>& queue = access().queue;
        if (!queue) {
            queue = std::make_unique<GuiQueue>();
            queue->moveToThread(application->thread());
            qAddPostRoutine(dropAll);
        }
        queue->functions.push_back(std::move(function));
        QCoreApplication::postEvent(queue.get(), new QEvent(QEvent::User));
    }

protected:
    void customEvent(QEvent*) override
    {
        std::function<void()> function;
        {
            const std::lock_guard<std::mutex> guard(access().mutex);
            function = std::move(functions.front());
            functions.pop_front();
        }
        function();
    }

private:
    struct Access
    {
        std::mutex mutex;
        std::unique_ptr<GuiQueue> queue;
    };

    static Access& access()
    {
        static Access one;
        return one;
    }

    // Called at the application's end, on its thread. What goes may call back in here.
    static void dropAll()
    {
        std::unique_ptr<GuiQueue> dropped;
        const std::lock_guard<std::mutex> guard(access().mutex);
        dropped.swap(access().queue);
    }

    std::deque<std::function<void()>> functions;
};

} // namespace

bool isOnGuiThread()
{
    const QCoreApplication* const application = QCoreApplication::instance();
    return !application || application->thread() == QThread::currentThread();
}

void runOnGuiThread(const std::function<void()>& function)
{
    if (isOnGuiThread()) {
        function();
        return;
    }
    const auto call = std::make_shared<Call>(function);
    // The queue alone holds this end of the call: it is over when the queue lets it go, called or not.
    std::shared_ptr<Call> end(call.get(), [call](Call*) { call->finish(); });
    GuiQueue::post([held = std::move(end)] { held->run(); });
    call->waitForEnd();
}

void postToGuiThread(const std::function<void()>& function)
{
    if (isOnGuiThread())
        function();
    else
        GuiQueue::post(function);
}

} // namespace Utilities
