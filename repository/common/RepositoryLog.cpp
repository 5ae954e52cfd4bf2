#include "repository/common/RepositoryLog.h"

#include "host/Shared/Logging/LogHandler.h"
#include "host/Shared/Logging/LogRecord.h"
#include "repository/common/MemoryGuard.h"

#include <cstdio>
#include <new>

namespace Repository {

using FrameworkCore::AppConfig::Outcome;

QString logCategory()
{
    return QStringLiteral("Repository");
}

namespace {

void log(const QString& text, const Outcome& outcome) noexcept
{
    using namespace Shared::Logging;
    try {
        LogLine line;
        line.time = QDateTime::currentDateTimeUtc();
        line.type = LogMessageType::Failure;
        line.identification = LogHandler::GetLogIdentification();
        line.category = logCategory();
        line.text = text;
        line.outcome = outcome;
        LogRecord::instance().append(std::move(line), true);
    } catch (const std::bad_alloc&) {
        std::fputs("Vantry: a message was lost, for want of memory\n", stderr);
    }
}

} // namespace

void logFailure(const QString& text) noexcept
{
    log(text, {});
}

Outcome logged(Outcome outcome) noexcept
{
    const auto write = [&outcome] {
        for (const QString& warning : outcome.get().warnings)
            logFailure(outcome.get().file + QStringLiteral(": ") + warning);
        if (outcome.ok() || outcome == FrameworkCore::AppConfig::Cancelled)
            return Outcome();
        Outcome kept = outcome;
        if (kept.get().value)
            kept.change().value.reset(); // which may be large, and the log is kept
        log(outcome.toText(), kept);
        return Outcome();
    };
    guardMemory(write, [](const QString& reason) {
        log(reason, {});
        return Outcome();
    });
    return outcome;
}

} // namespace Repository
