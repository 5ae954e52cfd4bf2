#pragma once

#include <QApplication>

namespace Vantry {

// Shows, while it exists, that the window is busy. GUI thread.
class WaitCursor
{
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    Q_DISABLE_COPY(WaitCursor)
};

} // namespace Vantry
