#include "widgets/AttributeWriting.h"

#include "app/VantryLog.h"
#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "host/Utilities/ModelViews/AttributeValueText.h"
#include "host/Utilities/RefusedEdits.h"
#include "host/Utilities/RepositoryAccess.h"

namespace Widgets {

namespace Values = FrameworkCore::Values;

using FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

namespace {

QString shortened(const QString& entered)
{
    constexpr int most = 80;
    const QString text = Utilities::ModelViews::attributeValueText(entered);
    return text.size() > most ? text.left(most) + QChar(0x2026) : text;
}

// What attributes of the value's type hold.
QString expected(const QVariant& value)
{
    using Values::Type;
    const auto attributeValue = Values::toAttributeVariant(value);
    const Type type = attributeValue ? Values::toValue(*attributeValue).type : Type::String;
    return Values::rangeText(type);
}

} // namespace

void refuseEdit(const QString& line, const QString& path, const QString& entered, const QString& cause)
{
    Vantry::logLine(Shared::Logging::LogMessageType::Failure) << line;
    const QString reason =
        cause.isEmpty()
            ? QString()
            : QString::fromLatin1("'%1' was not set to '%2': %3").arg(path, shortened(entered), cause);
    Utilities::RefusedEdits::instance().add({path, entered, reason});
}

void refuseConversion(const QString& path, const QVariant& attributeValue, const QString& entered)
{
    refuseEdit(QLatin1String("Cannot Convert Attribute Value to Variant Type ") +
                   QLatin1String(attributeValue.typeName()),
               path, entered, QLatin1String("it holds ") + expected(attributeValue));
}

QString whyReadOnly(RepositoryInterface& repository, const QString& path)
{
    const auto tree = repository.getTreeInterface();
    const auto backends = repository.getBackendInterface();
    const bool isLocked =
        tree && backends && backends->getLockedBackends().contains(tree->getNodeInformation(path).backend);
    return QString::fromLatin1(isLocked ? "it is locked; unlock it to change it" : "it can only be read");
}

void refuseUnended(const QString& path, const QString& entered)
{
    const auto repository = Utilities::GetAppConfigRepositoryInterface();
    const auto reader = repository ? repository->getReaderInterface() : nullptr;
    const bool exists = reader && reader->getAttribute(path);
    refuseEdit(QLatin1String("Write To Attribute ") + path + QLatin1String(" Failed"), path, entered,
               QLatin1String(exists ? "its editor was closed before the edit had ended"
                                    : "the attribute no longer exists"));
}

bool yieldsToNewer(RepositoryInterface& repository, const QString& path, const QVariant& shown)
{
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

void writeEditedOrLog(RepositoryInterface& repository, const QString& path, const QVariant& edited,
                      const QString& entered)
{
    if (!writeEdited(repository, path, edited))
        refuseEdit(QLatin1String("Write To Attribute ") + path + QLatin1String(" Failed"), path, entered);
}

} // namespace Widgets
