#pragma once

#include "host/FrameworkCore/AppConfig/AccessMode.h"
#include "host/FrameworkCore/CoreExport.h"

#include <QString>
#include <QVariant>

namespace FrameworkCore::AppConfig::Interfaces {

// A snapshot of one attribute, taken when it was asked for. Any thread.
class VANTRY_CORE_EXPORT AttributeInterface
{
public:
    virtual ~AttributeInterface() = default;

    virtual AccessMode getAccessMode() const = 0;
    virtual QString getName() const = 0; // the last component of the path
    virtual QString getPath() const = 0;
    virtual QString getDataType() const = 0; // Qt's type name; empty for a null attribute
    virtual QVariant getValue() const = 0;   // invalid for null and for write-only attributes
};

} // namespace FrameworkCore::AppConfig::Interfaces
