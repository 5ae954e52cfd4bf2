#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"
#include "host/HostExport.h"

#include <QObject>
#include <QPointer>
#include <QVariant>

#include <memory>

class QComboBox;

namespace Utilities {

class NotificationWrapper;

// Keeps the items of a combo box in step with an attribute whose text is a list joined by ";". Signals of the
// box are blocked while its items change, and the current text stays if it is still among them. GUI thread.
class VANTRY_HOST_EXPORT ComboBoxToAttributeMapper : public QObject
{
    Q_OBJECT

public:
    // The attribute lies at the path's child of that name; a missing one is created, empty. The box is not
    // owned.
    ComboBoxToAttributeMapper(
        QObject* parent,
        const std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface>& repository,
        QComboBox*& comboBox, const QString& path, const QString& attributeName);
    ~ComboBoxToAttributeMapper() override;

private:
    void showItems(const QVariant& value);

    QPointer<QComboBox> comboBox;
    std::unique_ptr<NotificationWrapper> watcher;
};

} // namespace Utilities
