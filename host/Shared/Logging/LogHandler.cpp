#include "host/Shared/Logging/LogHandler.h"

#include <mutex>

namespace Shared::Logging {

namespace {

struct Identification
{
    std::mutex mutex;
    QString text;
};

Identification& identification()
{
    static Identification& one = *new Identification; // never destroyed: static objects log at their end
    return one;
}

} // namespace

void LogHandler::SetLogIdentification(const QString& text)
{
    const std::lock_guard<std::mutex> guard(identification().mutex);
    // A copy of the characters: a literal of a plug-in is gone with it.
    identification().text = QString(text.constData(), text.size());
}

QString LogHandler::GetLogIdentification()
{
    const std::lock_guard<std::mutex> guard(identification().mutex);
    return identification().text;
}

} // namespace Shared::Logging
