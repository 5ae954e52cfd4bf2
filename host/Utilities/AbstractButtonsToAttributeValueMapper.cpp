#include "host/Utilities/AbstractButtonsToAttributeValueMapper.h"

#include <QAbstractButton>

namespace Utilities {

using FrameworkCore::AppConfig::AccessMode;

constexpr int createOrWrite = 3;

AbstractButtonsToAttributeValueMapper::AbstractButtonsToAttributeValueMapper(
    QObject* parent,
    const std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface>& attributeRepository,
    const QString& path)
    : QObject(parent), repository(attributeRepository), attributePath(path)
{
}

void AbstractButtonsToAttributeValueMapper::addButtonToValueMapping(QAbstractButton* button,
                                                                    const QVariant& value)
{
    if (button)
        connect(button, &QAbstractButton::clicked, this, [this, value] { writeValue(value); });
}

void AbstractButtonsToAttributeValueMapper::writeValue(const QVariant& value)
{
    if (!repository || attributePath.isEmpty())
        return;
    // A refusal is in the log of the repository, with its reason.
    if (const auto writer = repository->getWriterInterface())
        writer->createAttribute(attributePath, value, createOrWrite, static_cast<int>(AccessMode::ReadWrite));
}

} // namespace Utilities
