#pragma once

#include "host/FrameworkCore/CoreExport.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace FrameworkCore::AppConfig::Interfaces {

// Describes a validation to a person who may choose it.
struct ValidationDescription
{
    QString example; // as addValidation takes it, with an argument where it needs one: "range(0,100)"
    QString meaning; // what it asks for; empty where a repository does not give it
};

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

    // Of all validations, in the order of their names.
    virtual QVector<ValidationDescription> getValidationDescriptions()
    {
        QVector<ValidationDescription> descriptions;
        const QStringList names = getValidationNames();
        for (const QString& name : names)
            descriptions.append({name, {}});
        return descriptions;
    }

    // What was added to the path, as it was added; a repository that does not override it tells none.
    virtual QStringList getValidationsOf(const QString& path) const
    {
        Q_UNUSED(path)
        return {};
    }
};

} // namespace FrameworkCore::AppConfig::Interfaces
