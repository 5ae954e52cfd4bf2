#pragma once

#include "host/FrameworkCore/AppConfig/AttributeInterface.h"
#include "host/FrameworkCore/AppConfig/StatusCode.h"

#include <memory>

namespace FrameworkCore::AppConfig::Interfaces {

// Reading attributes. Any thread, also from inside an update callback.
class VANTRY_CORE_EXPORT AttributeReaderInterface
{
public:
    virtual ~AttributeReaderInterface() = default;

    // Stores the value; an invalid one when the result is not Success, and for a null attribute.
    // An element of a list is read by the list's path with the index. Option 0 reads what is in memory. A
    // write-only attribute gives NotReadable.
    virtual int readAttributeValue(const QString& path, QVariant& value, const int& option) = 0;

    // Empty when the path names no attribute (a node that only groups others is none).
    virtual std::shared_ptr<AttributeInterface> getAttribute(const QString& path) = 0;
};

} // namespace FrameworkCore::AppConfig::Interfaces
