#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>
#include <vector>

namespace Repository {

// A validation as it is attached to a path: what values it lets pass. Immutable; any thread.
struct Rule
{
    QString name;        // as it was asked for, argument included
    QString expectation; // completes "the value must be ..."
    std::function<bool(const QVariant& value, const QString& text)> accepts; // text is the value's text

    // What it asks for, and that a value is not that, for a person.
    QString explain() const;
    QString explain(const QVariant& value) const;
};

using Rules = std::vector<std::shared_ptr<const Rule>>;

// Names of all validations; those that take an argument are written as in "range(0,100)".
QStringList ruleNames();

// The validation of that name; empty, with the reason in error, when the name or its argument is not known.
std::shared_ptr<const Rule> makeRule(const QString& name, QString& error);

// The first rule that the value breaks; null when it keeps all.
const Rule* findBrokenRule(const Rules& rules, const QVariant& value);

} // namespace Repository
