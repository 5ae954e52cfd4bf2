#pragma once

#include "host/Shared/Logging/LogRecord.h"

#include <QStringList>

namespace TestSupport {

// The failures that the plug-in has logged since this was made.
class LoggedFailures
{
public:
    QStringList texts() const
    {
        QStringList found;
        for (const auto& line : Shared::Logging::LogRecord::instance().getLines(lastBefore)) {
            if (line.category == QLatin1String("Vantry") && static_cast<int>(line.type) == 3)
                found.append(line.text);
        }
        return found;
    }

private:
    quint64 lastBefore = Shared::Logging::LogRecord::instance().getLastNumber();
};

} // namespace TestSupport
