#include "host/Utilities/ModelViews/editors/TruthValueEditor.h"

#include <QCheckBox>
#include <QHBoxLayout>

namespace Utilities::ModelViews::Widgets {

TruthValueEditor::TruthValueEditor(QWidget* parent)
    : ValueEditor(parent), box(new QCheckBox(QStringLiteral("false"), this))
{
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(box);
    setFocusProxy(box);
    connect(box, &QCheckBox::toggled, this, [this](bool on) {
        box->setText(on ? QStringLiteral("true") : QStringLiteral("false"));
        emit edited();
    });
}

QVariant TruthValueEditor::getValue(QString& fault) const
{
    fault.clear();
    return box->isChecked();
}

void TruthValueEditor::setValue(const QVariant& value)
{
    box->setChecked(value.toBool());
}

} // namespace Utilities::ModelViews::Widgets
