#pragma once

#include "host/HostExport.h"

#include <QLabel>

namespace Utilities::ModelViews::Widgets {

// A label that shows any text as it is: what looks like markup in a name, a path or a value is never
// followed. All labels made by hand are of this class. GUI thread.
class VANTRY_HOST_EXPORT PlainLabel : public QLabel
{
    Q_OBJECT

public:
    explicit PlainLabel(QWidget* parent = nullptr);
    explicit PlainLabel(const QString& text, QWidget* parent = nullptr);
};

} // namespace Utilities::ModelViews::Widgets
