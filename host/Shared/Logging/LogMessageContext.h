#pragma once

#include <QFlags>
#include <QList>
#include <QString>
#include <QVariant>

namespace Shared::Logging {

// Where a log line comes from. A value.
struct LogMessageContext
{
    enum LogMessageFlag { NoFlag = 0, RecordOnly = 1 }; // RecordOnly keeps the line out of stderr
    Q_DECLARE_FLAGS(LogMessageFlags, LogMessageFlag)

    LogMessageContext(QString sourceFile, int sourceLine, QString sourceFunction, QString lineCategory,
                      QList<QVariant> lineArguments, LogMessageFlags lineFlags)
        : fileName(std::move(sourceFile)), line(sourceLine), functionName(std::move(sourceFunction)),
          category(std::move(lineCategory)), arguments(std::move(lineArguments)), flags(lineFlags)
    {
    }

    QString fileName; // empty when not known
    int line;         // -1 when not known
    QString functionName;
    QString category;
    QList<QVariant> arguments;
    LogMessageFlags flags;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(LogMessageContext::LogMessageFlags)

} // namespace Shared::Logging
