#pragma once

#include "host/HostExport.h"

#include <QString>
#include <QVariant>

namespace Utilities::ModelViews {

// An attribute's value as one line for people: lists joined by ",", everything else as FrameworkCore::Values
// writes it. Line ends and other control characters are shown by signs of their own; what is longer than a
// cell can show ends in an ellipsis. Empty for an invalid value.
VANTRY_HOST_EXPORT QString attributeValueText(const QVariant& value);

// The same with its line ends, up to so many characters and lines; what is longer ends in an ellipsis.
VANTRY_HOST_EXPORT QString attributeValueLines(const QVariant& value, int longest, int mostLines);

} // namespace Utilities::ModelViews
