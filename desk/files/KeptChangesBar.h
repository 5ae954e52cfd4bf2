#pragma once

#include "desk/common/WorkAreaBar.h"
#include "desk/files/KeptChanges.h"

class QVBoxLayout;

namespace Vantry {

// Shows what was kept when the program was asked to end, and what a person can do with it. Hidden while
// nothing is kept, and when it is closed until the next start. GUI thread.
class KeptChangesBar : public WorkAreaBar
{
    Q_OBJECT

public:
    explicit KeptChangesBar(QWidget* parent = nullptr) : WorkAreaBar("keptChangesBar", parent) {}

    // Shows what is kept as of now.
    void refresh();

signals:
    void applyRequested(const Vantry::KeptChanges::Entry& entry);

private:
    void setUp();
    QWidget* makeRow(const KeptChanges::Entry& entry, const QString& name);
    void showDiff(const KeptChanges::Entry& entry);
    void discard(const KeptChanges::Entry& entry, const QString& name);

    QVBoxLayout* rows = nullptr; // made for the first entry
};

} // namespace Vantry
