#pragma once

#include <QString>
#include <QVariant>

namespace Widgets {

// A value as one text: the items of a list joined by commas.
QString valueText(const QVariant& value);

// The text that shows a value to a person: JSON indented, and other texts with braces broken into lines. One
// that nobody could wait for stays as it is.
QString readableValue(const QVariant& value);

// The beginning of a text, as much of it as can be laid out at once without a wait; all of it as a rule.
QString beginningOf(const QString& text);

} // namespace Widgets
