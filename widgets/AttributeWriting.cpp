#include "widgets/AttributeWriting.h"

#include "app/VantryLog.h"

namespace Widgets {

using FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

void logFailure(const QString& text)
{
    Vantry::logLine(Shared::Logging::LogMessageType::Failure) << text;
}

void logConversionFailure(const QVariant& attributeValue)
{
    logFailure(QLatin1String("Cannot Convert Attribute Value to Variant Type ") +
               QLatin1String(attributeValue.typeName()));
}

bool writeStored(RepositoryInterface& repository, const QString& path, const QVariant& value)
{
    constexpr int afterStore = 8;
    const auto writer = repository.getWriterInterface();
    return writer && writer->writeAttributeValue(path, value, afterStore) == 0;
}

void writeAttribute(RepositoryInterface& repository, const QString& path, const QVariant& value)
{
    if (!writeStored(repository, path, value))
        logFailure(QLatin1String("Write To Attribute ") + path + QLatin1String(" Failed"));
}

} // namespace Widgets
