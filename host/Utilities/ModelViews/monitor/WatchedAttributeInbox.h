#pragma once

#include <memory>
#include <mutex>
#include <vector>

class QObject;

namespace Utilities::ModelViews {

class WatchedAttribute;

// The watched attributes that have changed since they were last looked at, each of them once. Any thread.
class WatchedAttributeInbox
{
public:
    using Attributes = std::vector<std::shared_ptr<WatchedAttribute>>;

    // The receiver is posted a QEvent::User when the first attribute comes in; the empty pointer ends that
    // and lets go what is in.
    void setReceiver(QObject* object);

    void add(std::shared_ptr<WatchedAttribute> attribute);
    Attributes take();

private:
    std::mutex mutex; // guards all below
    QObject* receiver = nullptr;
    Attributes changed;
};

} // namespace Utilities::ModelViews
