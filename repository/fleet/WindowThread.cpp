#include "repository/fleet/WindowThread.h"

#include <QCoreApplication>
#include <QThread>

namespace Repository {

bool isWindowThread()
{
    const QCoreApplication* const program = QCoreApplication::instance();
    return program && program->inherits("QGuiApplication") && program->thread() == QThread::currentThread();
}

} // namespace Repository
