#include "host/Shared/Logging/LogMessageContainer.h"

#include "host/Shared/Logging/LogHandler.h"
#include "host/Shared/Logging/LogRecord.h"

#include <QDebug>

namespace Shared::Logging {

// The line that all copies of a container write to; its end is the end of the last copy.
struct LogMessageContainer::Line
{
    Line(LogMessageContext lineContext, LogMessageType lineType)
        : context(std::move(lineContext)), type(lineType)
    {
    }
    Q_DISABLE_COPY(Line)

    ~Line()
    {
        LogLine complete;
        complete.time = QDateTime::currentDateTimeUtc();
        complete.type = type;
        complete.identification = LogHandler::GetLogIdentification();
        complete.category = QString(context.category.constData(), context.category.size());
        complete.text = text;
        LogRecord::instance().append(std::move(complete),
                                     !context.flags.testFlag(LogMessageContext::RecordOnly));
    }

    // Copies the characters: lines outlive the plug-in whose literals they quote.
    void add(const QString& piece) { text.append(piece.constData(), piece.size()); }

    const LogMessageContext context;
    const LogMessageType type;
    QString text;
};

LogMessageContainer::LogMessageContainer(LogMessageContext context, LogMessageType type)
    : line(std::make_shared<Line>(std::move(context), type))
{
}

LogMessageContainer& LogMessageContainer::operator<<(const QString& text)
{
    line->add(text);
    return *this;
}

LogMessageContainer& LogMessageContainer::operator<<(QLatin1String text)
{
    return *this << QString(text);
}

LogMessageContainer& LogMessageContainer::operator<<(const char* utf8)
{
    return *this << QString::fromUtf8(utf8);
}

LogMessageContainer& LogMessageContainer::operator<<(bool value)
{
    return *this << QLatin1String(value ? "true" : "false");
}

LogMessageContainer& LogMessageContainer::operator<<(int number)
{
    return *this << QString::number(number);
}

LogMessageContainer& LogMessageContainer::operator<<(qlonglong number)
{
    return *this << QString::number(number);
}

LogMessageContainer& LogMessageContainer::operator<<(qulonglong number)
{
    return *this << QString::number(number);
}

LogMessageContainer& LogMessageContainer::operator<<(double number)
{
    return *this << QString::number(number, 'g', QLocale::FloatingPointShortest);
}

LogMessageContainer& LogMessageContainer::operator<<(const QStringList& texts)
{
    QString written;
    QDebug(&written).nospace() << texts;
    return *this << written;
}

} // namespace Shared::Logging
