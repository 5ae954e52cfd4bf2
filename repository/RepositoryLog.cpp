#include "repository/RepositoryLog.h"

#include "host/Shared/Logging/LogStreamProvider.h"

#include <cstdio>
#include <new>

namespace Repository {

QString logCategory()
{
    return QStringLiteral("Repository");
}

void logFailure(const QString& text) noexcept
{
    using namespace Shared::Logging;
    try {
        const LogMessageContext context({}, -1, {}, logCategory(), {}, LogMessageContext::NoFlag);
        LogStreamProvider(context).handleMessageInternal(LogMessageType::Failure, {}) << text;
    } catch (const std::bad_alloc&) {
        std::fputs("Vantry: a message was lost, since there is no memory for it\n", stderr);
    }
}

} // namespace Repository
