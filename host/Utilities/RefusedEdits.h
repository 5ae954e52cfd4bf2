#pragma once

#include "host/HostExport.h"

#include <QObject>
#include <QString>

namespace Utilities {

// What a person has entered and the repository, or an editor before it, has not taken.
struct RefusedEdit
{
    QString path;
    QString entered; // as it was typed or chosen
    QString reason;  // a sentence with path, value and what was expected; empty where the repository logs it
};

// Hands refused edits from the editors to whoever keeps what was entered from being lost, and back again. GUI
// thread; one object for the process.
class VANTRY_HOST_EXPORT RefusedEdits : public QObject
{
    Q_OBJECT

public:
    static RefusedEdits& instance();

    // Logs the reason, too, since the editors' own lines do not give it.
    void add(const RefusedEdit& edit);

    // Asks whoever shows attributes to open an editor that holds what was entered.
    void editAgain(const RefusedEdit& edit) { emit editRequested(edit); }

signals:
    void added(const Utilities::RefusedEdit& edit);
    void editRequested(const Utilities::RefusedEdit& edit);

private:
    RefusedEdits() = default;
};

} // namespace Utilities
