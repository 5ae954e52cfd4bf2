#pragma once

#include "host/Shared/GuiContexts/ReaderInterface.h"
#include "host/Utilities/AnnotatedMutexLocker.h"
#include "host/Utilities/GuiThread.h"

#include <QMap>
#include <QMutex>
#include <QString>

#include <functional>
#include <memory>

namespace Utilities::ApplicationPlugins {

// Keeps the one application of each GUI context and identification. Any thread; applications are made on the
// GUI thread, one after the other, so that of several callers at once the first has it made and all get it.
// The mutex guards the map alone: neither the reader nor an application's making or end runs under it, since
// each may come back here.
template <typename Application>
class ApplicationInstanceToContextMapper
{
public:
    using Reader = std::shared_ptr<const Shared::GuiContexts::ReaderInterface>;
    using Creator = std::function<std::shared_ptr<Application>(const QString& key, const Reader& reader)>;

    // The application of that context and identification; it is made by the creator, or from the reader when
    // there is none. An exception of the making reaches the caller, and nothing is kept.
    std::shared_ptr<Application> getOrCreate(const Reader& reader, const QString& identification,
                                             const Creator& creator = {})
    {
        const QString key = contextKey(reader, identification);
        if (std::shared_ptr<Application> present = find(key))
            return present;
        std::shared_ptr<Application> application;
        runOnGuiThread([&] {
            application = find(key); // another caller's, made while this one waited for the GUI thread
            if (application)
                return;
            application = creator ? creator(key, reader) : std::make_shared<Application>(reader);
            store(key, application);
        });
        return application;
    }

    // Gives the number of applications that were removed.
    int remove(const Reader& reader, const QString& identification)
    {
        const QString key = contextKey(reader, identification);
        std::shared_ptr<Application> removed; // released after the lock
        const AnnotatedMutexLocker locker(mutex);
        const int count = instances.count(key);
        removed = instances.take(key);
        return count;
    }

private:
    static QString contextKey(const Reader& reader, const QString& identification)
    {
        const QStringList context = reader ? reader->getContextPath() : QStringList();
        return context.join(QString()) + identification;
    }

    std::shared_ptr<Application> find(const QString& key)
    {
        const AnnotatedMutexLocker locker(mutex);
        return instances.value(key);
    }

    // An application that its own making has stored under the same key is replaced.
    void store(const QString& key, std::shared_ptr<Application> application)
    {
        const AnnotatedMutexLocker locker(mutex);
        instances[key].swap(application); // what was replaced goes with the argument, after the lock
    }

    QMutex mutex;
    QMap<QString, std::shared_ptr<Application>> instances;
};

} // namespace Utilities::ApplicationPlugins
