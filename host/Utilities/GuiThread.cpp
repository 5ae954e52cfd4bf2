#include "host/Utilities/GuiThread.h"

#include <QCoreApplication>
#include <QThread>

#include <condition_variable>
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
    // The event alone holds this end of the call: it is over when the event is, even one that is dropped.
    std::shared_ptr<Call> end(call.get(), [call](Call*) { call->finish(); });
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [held = std::move(end)] { held->run(); }, Qt::QueuedConnection);
    call->waitForEnd();
}

void postToGuiThread(const std::function<void()>& function)
{
    if (isOnGuiThread())
        function();
    else
        QMetaObject::invokeMethod(QCoreApplication::instance(), function, Qt::QueuedConnection);
}

} // namespace Utilities
