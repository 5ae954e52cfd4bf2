#pragma once

#include "host/FrameworkCore/AppConfig/Outcome.h"
#include "host/FrameworkCore/CoreExport.h"

#include <QString>
#include <QVariant>

namespace FrameworkCore::AppConfig::Interfaces {

// Creating and writing attributes, and elements of lists: the path of an element is the list's with an index.
// Any thread, also from inside an update callback. Callbacks run on the calling thread before the operation
// returns, when every lock is released again.
class VANTRY_CORE_EXPORT AttributeWriterInterface
{
public:
    virtual ~AttributeWriterInterface() = default;

    // Option 2 refuses an existing path; option 3 writes the value of an existing one, whose type and access
    // stay; option 4 is 2, but an element of an array comes before the one that has its index so far. After
    // the last element, an array of n gets that of the index n; none comes beyond that. access is the
    // AccessMode of a new attribute as a number. The value's type becomes the attribute's.
    virtual bool createAttribute(const QString& path, const QVariant& value, const int& option,
                                 const int& access) = 0;

    // Converts the value to the attribute's type and stores it; an invalid value sets the type's empty value.
    // points is the sum of the UpdatePoints to notify. Gives a StatusCode; unless Success, nothing changed.
    virtual int writeAttributeValue(const QString& path, const QVariant& value, const int& points) = 0;

    // The same two with all that is known of a refusal; of a repository that does not override them, no more
    // than the status.
    virtual Outcome create(const QString& path, const QVariant& value, int option, int access)
    {
        return createAttribute(path, value, option, access)
                   ? Outcome()
                   : Outcome(BackendFailure, QStringLiteral("the log says why"));
    }
    virtual Outcome write(const QString& path, const QVariant& value, int points)
    {
        const auto status = StatusCode(writeAttributeValue(path, value, points));
        return status == Success ? Outcome() : Outcome(status, QStringLiteral("the log says why"));
    }

    // As write with all points, but the attribute takes the type of the value, which its validations are
    // asked about, and a type tag in its file follows. Refused where the file cannot hold such a value. A
    // repository that does not override it keeps the type.
    virtual Outcome retype(const QString& path, const QVariant& value)
    {
        constexpr int allPoints = 15;
        return write(path, value, allPoints);
    }
};

} // namespace FrameworkCore::AppConfig::Interfaces
