#pragma once

#include "host/FrameworkCore/AppConfig/Outcome.h"

#include <QObject>

namespace Vantry {

// Brings what comes of opening the files of folders, which happens on several threads, to the window. It is
// made on the GUI thread.
class ProblemFeed : public QObject
{
    Q_OBJECT

public:
    using Outcome = FrameworkCore::AppConfig::Outcome;

    static ProblemFeed& instance();

    // Any thread.
    void add(const Outcome& outcome);

signals:
    void added(const FrameworkCore::AppConfig::Outcome& outcome); // on the GUI thread
};

} // namespace Vantry
