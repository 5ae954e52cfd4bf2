#pragma once

#include "host/FrameworkCore/AppConfig/ChangesInterface.h"
#include "host/HostExport.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <memory>

namespace Utilities {

// Which backends hold changes that are not saved, followed over time. It asks a few times a second, which
// costs next to nothing, where listening would cost every write something. GUI thread.
class VANTRY_HOST_EXPORT UnsavedBackends : public QObject
{
    Q_OBJECT

public:
    using ChangesInterface = FrameworkCore::AppConfig::Interfaces::ChangesInterface;

    // Without the interface there are never any.
    explicit UnsavedBackends(std::shared_ptr<ChangesInterface> changes, QObject* parent = nullptr);

    const QStringList& getNames() const { return names; }

    // Asks now.
    void look();

signals:
    void changed();

    // At every look, for those who follow something else as cheap.
    void looked();

private:
    void setPace();

    std::shared_ptr<ChangesInterface> changes;
    QStringList names;
    QTimer timer;
};

} // namespace Utilities
