#pragma once

#include <QString>

namespace Utilities::ModelViews::Widgets {

// Why the text cannot be the name of a new attribute, for the person who types it; empty when it can. A name
// may be a path of several names below one another. Any thread.
QString attributeNameFault(const QString& name);

} // namespace Utilities::ModelViews::Widgets
