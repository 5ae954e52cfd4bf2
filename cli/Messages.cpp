#include "cli/Messages.h"

#include "host/FrameworkCore/Values/PrintableText.h"
#include "host/Shared/Logging/LogRecord.h"
#include "repository/RepositoryLog.h"

#include <cstdio>
#include <mutex>

namespace CommandLine {

void Messages::tell(const QString& text)
{
    const std::string message = "vantry: " + FrameworkCore::Values::printableLine(text.toStdString()) + '\n';
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
    static std::mutex taking;
    static quint64 lastTaken = 0;
    const std::lock_guard lock(taking);
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
