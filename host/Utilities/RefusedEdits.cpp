#include "host/Utilities/RefusedEdits.h"

#include "host/Shared/Logging/LogStreamProvider.h"

namespace Utilities {

RefusedEdits& RefusedEdits::instance()
{
    static RefusedEdits edits;
    return edits;
}

void RefusedEdits::add(const RefusedEdit& edit)
{
    using namespace Shared::Logging;
    if (!edit.reason.isEmpty()) {
        const LogMessageContext context({}, -1, {}, QStringLiteral("Editing"), {}, LogMessageContext::NoFlag);
        LogStreamProvider(context).handleMessageInternal(LogMessageType::Failure, {}) << edit.reason;
    }
    emit added(edit);
}

} // namespace Utilities
