#pragma once

#include <QProxyStyle>

namespace Vantry {

// The platform's style, which also frames a view or a text that has the focus: where nothing is selected,
// many a style shows nothing of it, and the keyboard gets lost. GUI thread.
class FocusStyle : public QProxyStyle
{
    Q_OBJECT

public:
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

} // namespace Vantry
