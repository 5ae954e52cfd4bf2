#pragma once

#include "repository/backends/Backend.h"

#include <QStringList>

#include <functional>
#include <memory>

namespace Repository {

// Makes the backends of some types: one row of the registry. Any thread.
class BackendKind
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using Mount = std::function<Outcome(const std::shared_ptr<Backend>& backend)>;

    // Hears what comes of work that no caller waits for. Any thread.
    using Observer = std::function<void(const Outcome& outcome)>;

    virtual ~BackendKind() = default;

    // Logs such an outcome, and lets the observer, if there is one, hear it where it says something.
    static void report(const Outcome& outcome, const Observer& observer);

    // In the order in which they are offered to people.
    virtual QStringList getTypes() const = 0;

    // Whether it makes backends of a type, which may be a dialect of one of those.
    virtual bool hasType(const QString& type) const = 0;

    // Where a backend is kept, in the form in which it is known from then on.
    virtual QString toLocation(const QString& given) const = 0;

    // Whether both are the same place, however they are written.
    virtual bool isSamePlace(const QString& location, const QString& other) const = 0;

    // Opens what is kept there and mounts it; refused while another backend has it.
    virtual Outcome open(const Backend::Description& description, const Mount& mount) = 0;

    // After a backend was closed.
    virtual void forget(const Backend& backend) = 0;
};

} // namespace Repository
