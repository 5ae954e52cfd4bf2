#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"

namespace Utilities::ModelViews::Widgets {

PlainLabel::PlainLabel(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

PlainLabel::PlainLabel(const QString& text, QWidget* parent) : PlainLabel(parent)
{
    setText(text);
}

} // namespace Utilities::ModelViews::Widgets
