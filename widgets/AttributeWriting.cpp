#include "widgets/AttributeWriting.h"

#include "app/VantryLog.h"

namespace Widgets {

using FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

namespace {

bool hasChangedSince(RepositoryInterface& repository, const QString& path, const QVariant& shown)
{
    const auto reader = repository.getReaderInterface();
    QVariant current;
    return reader && reader->readAttributeValue(path, current, 0) == 0 &&
           current.userType() == shown.userType() && current != shown;
}

} // namespace

void logFailure(const QString& text)
{
    Vantry::logLine(Shared::Logging::LogMessageType::Failure) << text;
}

void logConversionFailure(const QVariant& attributeValue)
{
    logFailure(QLatin1String("Cannot Convert Attribute Value to Variant Type ") +
               QLatin1String(attributeValue.typeName()));
}

bool writeEdited(RepositoryInterface& repository, const QString& path, const QVariant& shown,
                 const QVariant& edited)
{
    if (edited == shown && hasChangedSince(repository, path, shown))
        return true;
    constexpr int afterStore = 8;
    const auto writer = repository.getWriterInterface();
    return writer && writer->writeAttributeValue(path, edited, afterStore) == 0;
}

void writeEditedOrLog(RepositoryInterface& repository, const QString& path, const QVariant& shown,
                      const QVariant& edited)
{
    if (!writeEdited(repository, path, shown, edited))
        logFailure(QLatin1String("Write To Attribute ") + path + QLatin1String(" Failed"));
}

} // namespace Widgets
