#pragma once

#include "host/FrameworkCore/AppConfig/Outcome.h"

#include <QMap>
#include <QObject>

namespace Vantry {

// Brings what comes of opening the files of folders, which happens on several threads, to the windows. It
// is made on the GUI thread.
class ProblemFeed : public QObject
{
    Q_OBJECT

public:
    using Outcome = FrameworkCore::AppConfig::Outcome;

    static ProblemFeed& instance();

    // Any thread.
    void add(const Outcome& outcome);

    // Those that are none of the past, in the order of their files. GUI thread.
    QList<Outcome> getProblems() const { return problems.values(); }

signals:
    void added(const FrameworkCore::AppConfig::Outcome& outcome); // on the GUI thread

private:
    void tell(const Outcome& outcome);

    QMap<QString, Outcome> problems; // by their files
};

} // namespace Vantry
