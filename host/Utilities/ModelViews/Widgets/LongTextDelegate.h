#pragma once

#include "host/HostExport.h"

#include <QStyledItemDelegate>

namespace Utilities::ModelViews::Widgets {

// Draws and measures of a cell's text no more than a screen is wide. A view would lay out all of it, several
// times, also where it is out of sight.
class VANTRY_HOST_EXPORT LongTextDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    // Of a long text the end is left out, or the middle.
    explicit LongTextDelegate(QObject* parent, Qt::TextElideMode leftOut = Qt::ElideRight);

    QString displayText(const QVariant& value, const QLocale& locale) const override;

private:
    const Qt::TextElideMode leftOut;
};

} // namespace Utilities::ModelViews::Widgets
