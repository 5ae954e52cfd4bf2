#pragma once

#include "host/FrameworkCore/AppConfig/ValidationInterface.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>
#include <vector>

namespace Repository {

// A validation as it is attached to a path: what values it lets pass. Immutable; any thread.
struct Validation
{
    // Undecided: the check was given up before it came to a result.
    enum class Verdict { Keeps, Breaks, Undecided };

    QString name;        // as it was asked for, argument included
    QString expectation; // completes "the value must be ..."
    std::function<Verdict(const QVariant& value, const QString& text)> judge; // text is the value's text
};

using Validations = std::vector<std::shared_ptr<const Validation>>;

// Names of all validations; those that take an argument are written as in "range(0,100)".
QStringList validationNames();

// The same for people, with an example of each argument.
QVector<FrameworkCore::AppConfig::Interfaces::ValidationDescription> validationDescriptions();

// The validation of that name; empty, with the reason in error, when the name or its argument is not known.
std::shared_ptr<const Validation> makeValidation(const QString& name, QString& error);

// Why a value does not pass.
struct Breach
{
    std::shared_ptr<const Validation> validation; // null when the value passes
    Validation::Verdict verdict = Validation::Verdict::Keeps;

    explicit operator bool() const { return validation != nullptr; }

    // For a person: what the validation asks for, and that the value is not that; or that it could not be
    // checked.
    QString explain() const;
    QString explain(const QVariant& value) const;
};

// Of the first validation that the value does not keep.
Breach findBreach(const Validations& validations, const QVariant& value);

} // namespace Repository
