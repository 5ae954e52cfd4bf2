#pragma once

#include "host/Utilities/RefusedEdits.h"

#include <QStringList>

namespace TestSupport {

// What was entered in vain since this was made, as "path | entry | reason".
class RefusedEntries : public QObject
{
public:
    RefusedEntries()
    {
        using Utilities::RefusedEdits;
        connect(&RefusedEdits::instance(), &RefusedEdits::added, this, [this](const auto& edit) {
            entries.append(QStringLiteral("%1 | %2 | %3").arg(edit.path, edit.entered, edit.reason));
        });
    }

    QStringList texts() const { return entries; }

private:
    QStringList entries;
};

} // namespace TestSupport
