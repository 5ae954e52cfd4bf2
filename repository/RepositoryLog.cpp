#include "repository/RepositoryLog.h"

#include "host/Shared/Logging/LogStreamProvider.h"

namespace Repository {

QString logCategory()
{
    return QStringLiteral("Repository");
}

void logFailure(const QString& text)
{
    using namespace Shared::Logging;
    const LogMessageContext context({}, -1, {}, logCategory(), {}, LogMessageContext::NoFlag);
    LogStreamProvider(context).handleMessageInternal(LogMessageType::Failure, {}) << text;
}

} // namespace Repository
