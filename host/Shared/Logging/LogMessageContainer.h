#pragma once

#include "host/FrameworkCore/CoreExport.h"
#include "host/Shared/Logging/LogMessageContext.h"
#include "host/Shared/Logging/LogMessageType.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace Shared::Logging {

// The text of one log line while it is put together. The line is complete, and handed on, when the last copy
// of the container is released. One thread at a time.
class VANTRY_CORE_EXPORT LogMessageContainer
{
public:
    LogMessageContainer(LogMessageContext context, LogMessageType type);

    LogMessageContainer& operator<<(const QString& text);
    LogMessageContainer& operator<<(QLatin1String text);
    LogMessageContainer& operator<<(const char* utf8);
    LogMessageContainer& operator<<(bool value); // "true" or "false"
    LogMessageContainer& operator<<(int number);
    LogMessageContainer& operator<<(qlonglong number);
    LogMessageContainer& operator<<(qulonglong number);
    LogMessageContainer& operator<<(double number);
    LogMessageContainer& operator<<(const QStringList& texts); // ("a", "b"), as a Qt debug stream writes it

private:
    struct Line;
    std::shared_ptr<Line> line;
};

} // namespace Shared::Logging
