#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"
#include "host/HostExport.h"

#include <QObject>
#include <QVariant>

#include <memory>

class QAbstractButton;

namespace Utilities {

// Writes a value into an attribute when a button is clicked. A missing attribute is created. GUI thread.
class VANTRY_HOST_EXPORT AbstractButtonsToAttributeValueMapper : public QObject
{
    Q_OBJECT

public:
    // With an empty repository, or an empty path, clicks do nothing.
    AbstractButtonsToAttributeValueMapper(
        QObject* parent,
        const std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface>& repository,
        const QString& attributePath);

    // The button is not owned and may die first.
    void addButtonToValueMapping(QAbstractButton* button, const QVariant& value);

private:
    void writeValue(const QVariant& value);

    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository;
    QString attributePath;
};

} // namespace Utilities
