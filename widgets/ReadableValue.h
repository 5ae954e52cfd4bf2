#pragma once

#include <QString>
#include <QVariant>

namespace Widgets {

// A value as one text: the items of a list joined by commas.
QString valueText(const QVariant& value);

// The beginning of that text, and more than readableText lays out; all of it when it is shorter.
QString leadingText(const QVariant& value);

// The text of a value as it shows it to a person: JSON indented, and other texts with braces broken into
// lines. One that nobody could wait for stays as it is.
QString readableText(const QString& text);

// The beginning of a text, as much of it as can be laid out at once without a wait; all of it as a rule.
QString beginningOf(const QString& text);

} // namespace Widgets
