#include "host/Utilities/ModelViews/editors/LineValueEditor.h"

#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"

#include <QHBoxLayout>
#include <QLineEdit>

namespace Utilities::ModelViews::Widgets {

namespace Values = FrameworkCore::Values;

namespace {

Values::Type valueTypeOf(int metaType)
{
    switch (metaType) {
    case QMetaType::LongLong:
        return Values::Type::Integer;
    case QMetaType::ULongLong:
        return Values::Type::Unsigned;
    case QMetaType::Double:
        return Values::Type::Double;
    default:
        return Values::Type::String;
    }
}

} // namespace

LineValueEditor::LineValueEditor(int metaType, QWidget* parent)
    : ValueEditor(parent), type(metaType), edit(new QLineEdit(this))
{
    edit->setObjectName(QStringLiteral("edtValue"));
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(edit);
    setFocusProxy(edit);
    if (type != QMetaType::QString)
        edit->setText(QStringLiteral("0"));
    connect(edit, &QLineEdit::textChanged, this, &ValueEditor::edited);
}

QVariant LineValueEditor::getValue(QString& fault) const
{
    fault.clear();
    if (type == QMetaType::QString)
        return edit->text();
    const auto text = std::get<std::string>(Values::toValue(edit->text()).data);
    const Values::ReadResult read = Values::readText(text, valueTypeOf(type));
    if (read.ok())
        return Values::toVariant(read.value);
    fault = text.empty() ? tr("A number is missing.") : QString::fromStdString(read.error);
    return {};
}

void LineValueEditor::setValue(const QVariant& value)
{
    edit->setText(QString::fromStdString(Values::toText(Values::toValue(value))));
}

} // namespace Utilities::ModelViews::Widgets
