#pragma once

#include <QMutex>

#if defined(__SANITIZE_THREAD__)
#include <sanitizer/tsan_interface.h>
#endif

namespace Utilities {

// Locks a QMutex for a scope and tells the thread sanitizer so, which does not see into Qt's libraries.
class AnnotatedMutexLocker
{
public:
    explicit AnnotatedMutexLocker(QMutex& lockedMutex) : mutex(lockedMutex)
    {
        mutex.lock();
#if defined(__SANITIZE_THREAD__)
        __tsan_acquire(&mutex);
#endif
    }

    ~AnnotatedMutexLocker()
    {
#if defined(__SANITIZE_THREAD__)
        __tsan_release(&mutex);
#endif
        mutex.unlock();
    }

    Q_DISABLE_COPY(AnnotatedMutexLocker)

private:
    QMutex& mutex;
};

} // namespace Utilities
