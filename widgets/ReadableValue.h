#pragma once

#include <QString>
#include <QVariant>

namespace Widgets {

// The text that shows a value to a person: the items of a list joined by commas, JSON indented, and other
// long texts with braces broken into lines.
QString readableValue(const QVariant& value);

} // namespace Widgets
