#include "widgets/AttributeWriting.h"

#include "app/VantryLog.h"
#include "host/FrameworkCore/Values/VariantValue.h"

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

bool yieldsToNewer(RepositoryInterface& repository, const QString& path, const QVariant& shown)
{
    namespace Values = FrameworkCore::Values;
    const auto reader = repository.getReaderInterface();
    QVariant current;
    if (!reader || reader->readAttributeValue(path, current, 0) != 0 ||
        Values::isSameValue(current, Values::toAttributeVariant(shown).value_or(shown)))
        return false;
    Vantry::logLine(Shared::Logging::LogMessageType::Information)
        << "Attribute '" << path
        << "' keeps the value written since its editor was opened, which was left untouched";
    return true;
}

bool writeEdited(RepositoryInterface& repository, const QString& path, const QVariant& edited)
{
    constexpr int afterStore = 8;
    const auto writer = repository.getWriterInterface();
    return writer && writer->writeAttributeValue(path, edited, afterStore) == 0;
}

void writeEditedOrLog(RepositoryInterface& repository, const QString& path, const QVariant& edited)
{
    if (!writeEdited(repository, path, edited))
        logFailure(QLatin1String("Write To Attribute ") + path + QLatin1String(" Failed"));
}

} // namespace Widgets
