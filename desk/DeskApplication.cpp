#include "desk/DeskApplication.h"

#include "host/Utilities/HostLog.h"
#include "host/Utilities/Worker.h"

#include <cstdio>

namespace Vantry {

namespace {

void logCurrentFailure()
{
    try {
        Utilities::logFailure(QCoreApplication::translate("Vantry::DeskApplication", "It was not done: %1")
                                  .arg(Utilities::currentFailure()));
    } catch (...) {
        std::fputs("vantry-desk: something was not done for want of memory\n", stderr);
    }
}

} // namespace

bool DeskApplication::notify(QObject* receiver, QEvent* event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (...) { // must not pass through Qt's event loop
        logCurrentFailure();
        return false;
    }
}

} // namespace Vantry
