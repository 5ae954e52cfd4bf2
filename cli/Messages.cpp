#include "cli/Messages.h"

#include "host/FrameworkCore/Values/PrintableText.h"
#include "host/Shared/Logging/LogRecord.h"

#include <cstdio>

namespace CommandLine {

void Messages::tell(const QString& text)
{
    const std::string message = "vantry: " + FrameworkCore::Values::printableLine(text.toStdString()) + '\n';
    std::fwrite(message.data(), 1, message.size(), stderr);
}

void Messages::takeOverLog()
{
    Shared::Logging::LogRecord::instance().setWritesToStandardError(false);
}

} // namespace CommandLine
