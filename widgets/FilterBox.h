#pragma once

#include <QComboBox>

namespace Widgets {

// A box that draws no more of a long text than it has room for. GUI thread.
class FilterBox : public QComboBox
{
    Q_OBJECT

public:
    using QComboBox::QComboBox;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace Widgets
