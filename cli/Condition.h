#pragma once

#include "repository/validation/BoundedExpression.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

namespace CommandLine {

// What "find --where" asks of a node, as in "value > 10" or "name ~ port".
class Condition
{
public:
    struct Node
    {
        QString path; // relative to the file's root
        QString type; // "group" for a mere group, empty for what must not be read
        std::optional<QVariant> value;
    };

    // Nothing, and why, for a text that is none.
    static std::optional<Condition> parse(const QString& text, QString& reason);

    // Nothing when an expression took too many steps.
    std::optional<bool> holds(const Node& node) const;

private:
    std::optional<bool> holdsFor(const QString& text) const;
    bool holdsOrdered(const QVariant& value) const;

    QString field;
    QString comparison;
    QString operand;
    std::optional<Repository::BoundedExpression> expression;
};

} // namespace CommandLine
