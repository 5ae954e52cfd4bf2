#include "host/Utilities/ModelViews/editors/NullValueEditor.h"

#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"

#include <QHBoxLayout>

namespace Utilities::ModelViews::Widgets {

NullValueEditor::NullValueEditor(QWidget* parent) : ValueEditor(parent)
{
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* const explanation =
        new PlainLabel(tr("The first value that is written gives the attribute its type."), this);
    explanation->setWordWrap(true);
    layout->addWidget(explanation);
}

QVariant NullValueEditor::getValue(QString& fault) const
{
    fault.clear();
    return {};
}

void NullValueEditor::setValue(const QVariant&)
{
}

} // namespace Utilities::ModelViews::Widgets
