#include "cli/Messages.h"

#include "host/Shared/Logging/LogRecord.h"
#include "repository/RepositoryLog.h"

#include <atomic>
#include <cstdio>

namespace CommandLine {

namespace {

std::atomic<quint64> lastTaken{0};

} // namespace

void Messages::tell(const QString& text)
{
    QString line = text;
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    const std::string message = "vantry: " + line.toStdString() + '\n';
    std::fwrite(message.data(), 1, message.size(), stderr);
}

QString Messages::withNameAsGiven(const std::string& reason, const std::string& path, const QString& given)
{
    return QString::fromStdString(reason).replace(QString::fromStdString(path), given);
}

void Messages::takeOverLog()
{
    Shared::Logging::LogRecord::instance().setWritesToStandardError(false);
}

QStringList Messages::takeRefusals()
{
    QStringList refusals;
    const auto lines = Shared::Logging::LogRecord::instance().getLines(lastTaken);
    for (const auto& line : lines) {
        lastTaken = line.number;
        if (line.type == Shared::Logging::LogMessageType::Failure &&
            line.category == Repository::logCategory())
            refusals.append(line.text);
    }
    return refusals;
}

} // namespace CommandLine
