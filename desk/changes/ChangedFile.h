#pragma once

#include "host/FrameworkCore/AppConfig/ChangesInterface.h"

#include <QString>
#include <QVector>

namespace Vantry {

// What is unsaved of one file. A value type.
struct ChangedFile
{
    using UnsavedChange = FrameworkCore::AppConfig::Interfaces::UnsavedChange;

    QString backend;
    QString label;        // for people
    quint64 revision = 0; // of its changes, at which this was found
    QVector<UnsavedChange> changes;
    QString diff; // that saving would write
};

} // namespace Vantry
