#pragma once

#include "host/FrameworkCore/CoreExport.h"

#include <QString>
#include <QStringList>

namespace FrameworkCore::AppConfig::Interfaces {

// Rules that every later write of an attribute must satisfy. Any thread.
class VANTRY_CORE_EXPORT ValidationInterface
{
public:
    virtual ~ValidationInterface() = default;

    // Names that addValidation accepts; those that take an argument are listed by their bare name.
    virtual QStringList getValidationNames() = 0;

    // Adds a rule to a path, for example "integer" or "range(0,100)". Every later write and creation must
    // keep it; the present value is left as it is. Non-zero when added; 0 when the path is invalid or the
    // name or its argument is not known (logged).
    virtual int addValidation(const QString& path, const QString& validationName) = 0;
};

} // namespace FrameworkCore::AppConfig::Interfaces
