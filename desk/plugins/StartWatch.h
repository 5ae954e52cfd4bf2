#pragma once

#include "desk/plugins/LoadingNote.h"

#include <QObject>

#include <memory>

class QWidget;

namespace Vantry {

// Remembers how many starts in a row were ended by plug-ins. A start is over when its window has been drawn
// with all plug-ins in it, or is closed before; until then they are noted. GUI thread.
class StartWatch : public QObject
{
    Q_OBJECT

public:
    // Of this start, whose last one had culprits or not: the number of failed ones right before it.
    static int countFailedStarts(bool hasCulprits);

    explicit StartWatch(const QStringList& plugins);
    ~StartWatch() override;

    // The window whose first drawing ends the start.
    void waitFor(QWidget& window);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void finish();

    std::unique_ptr<LoadingNote> note; // until the start is over
};

} // namespace Vantry
