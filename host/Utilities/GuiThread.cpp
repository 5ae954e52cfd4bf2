#include "host/Utilities/GuiThread.h"

#include <QCoreApplication>
#include <QThread>

#include <exception>
#include <stdexcept>

namespace Utilities {

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
    bool called = false;
    std::exception_ptr failure;
    const auto call = [&] {
        called = true;
        try {
            function();
        } catch (...) {
            failure = std::current_exception(); // must not pass through Qt's event loop
        }
    };
    QMetaObject::invokeMethod(QCoreApplication::instance(), call, Qt::BlockingQueuedConnection);
    if (failure)
        std::rethrow_exception(failure);
    if (!called)
        throw std::runtime_error("the application ended before its GUI thread could do the work");
}

void postToGuiThread(const std::function<void()>& function)
{
    if (isOnGuiThread())
        function();
    else
        QMetaObject::invokeMethod(QCoreApplication::instance(), function, Qt::QueuedConnection);
}

} // namespace Utilities
