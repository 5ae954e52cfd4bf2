#pragma once

#include <QApplication>

namespace Vantry {

// The application of the desk. What an answer to an event throws, as for want of memory, ends that answer
// only: it is logged as a failure, and the window with all unsaved changes goes on. GUI thread.
class DeskApplication : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override;
};

} // namespace Vantry
