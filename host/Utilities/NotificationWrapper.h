#pragma once

#include "host/HostExport.h"

#include <QList>
#include <QObject>
#include <QReadWriteLock>
#include <QString>
#include <QVariant>

#include <functional>
#include <memory>

namespace Utilities {

// Watches one attribute and brings its changes to the thread of this object, the GUI thread as a rule:
// whatever thread writes, every callback is called there with the current value. Changes that come faster
// than a screen is drawn are merged; the last one always arrives. The attribute may be yet to come. Create,
// activate and destroy it on its own thread; destroying it is safe at any moment, also from inside a
// callback.
class VANTRY_HOST_EXPORT NotificationWrapper : public QObject
{
    Q_OBJECT

public:
    using ValueCallback = std::function<void(const QVariant&)>;

    // deliverOnActivation: setActive(true) also delivers the current value when there is one.
    // deliverUnchanged: a write that leaves the value equal is delivered too.
    NotificationWrapper(const QString& attributePath, const bool& deliverOnActivation,
                        const bool& deliverUnchanged);
    ~NotificationWrapper() override;

    // Starts or stops watching. Without a repository nothing is watched.
    void setActive(const bool& active);

    // Guards valueChangedCallbacks: hold it for writing to append. Callbacks run without it.
    QReadWriteLock lock;
    QList<ValueCallback> valueChangedCallbacks;

private:
    struct Watch;

    void deliver();

    QString attributePath;
    bool deliverOnActivation;
    bool deliverUnchanged;
    std::shared_ptr<Watch> watch;
};

} // namespace Utilities
