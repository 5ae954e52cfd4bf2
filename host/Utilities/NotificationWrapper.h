#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"
#include "host/HostExport.h"

#include <QList>
#include <QObject>
#include <QReadWriteLock>
#include <QString>
#include <QVariant>

#include <functional>
#include <memory>

namespace Utilities {

class PacedInbox;

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

    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    // deliverOnActivation: setActive(true) also delivers the current value, when there is one, in the next
    // turn of the event loop. deliverUnchanged: a write that leaves the value equal is delivered too, once,
    // however many update points it names. An empty repository stands for the one that the process has at the
    // activation.
    NotificationWrapper(const QString& attributePath, const bool& deliverOnActivation,
                        const bool& deliverUnchanged, std::shared_ptr<Repository> repository = {});
    ~NotificationWrapper() override;

    // Starts or stops watching; no callback runs after it was stopped. Without a repository nothing is
    // watched. The removal of the attribute delivers an invalid value.
    void setActive(const bool& active);

    // Guards valueChangedCallbacks: hold it for writing to append. Callbacks run without it.
    QReadWriteLock lock;
    QList<ValueCallback> valueChangedCallbacks;

private:
    struct Watch;

    void start(const std::shared_ptr<Repository>& watched);
    void stop();
    void deliver();
    QVariant readValue() const;

    const QString attributePath;
    const bool deliverOnActivation;
    const bool deliverUnchanged;
    const std::shared_ptr<Repository> givenRepository;

    std::shared_ptr<Watch> watch; // while active; shared with the registered callback
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::AttributeReaderInterface> reader;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RegistrationInterface> registration;
    QVariant lastValue; // what the callbacks know
    std::unique_ptr<PacedInbox> inbox;
};

} // namespace Utilities
