#include "host/Utilities/ModelViews/editors/ValueEditor.h"

#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"
#include "host/Utilities/ModelViews/editors/BytesValueEditor.h"
#include "host/Utilities/ModelViews/editors/DateTimeValueEditor.h"
#include "host/Utilities/ModelViews/editors/ListValueEditor.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLineEdit>

#include <type_traits>

namespace Utilities::ModelViews::Widgets {

namespace Values = FrameworkCore::Values;

namespace {

// One line for a text or a number. Numbers are taken only as they can be kept, to the last digit.
class LineValueEditor : public ValueEditor
{
public:
    explicit LineValueEditor(int metaType) : type(metaType), edit(new QLineEdit(this))
    {
        edit->setObjectName(QStringLiteral("edtValue"));
        fillWith(*edit);
        if (type != QMetaType::QString)
            edit->setText(QStringLiteral("0"));
        connect(edit, &QLineEdit::textChanged, this, &ValueEditor::edited);
    }

    QVariant getValue(QString& fault) const override
    {
        fault.clear();
        if (type == QMetaType::QString)
            return edit->text();
        const auto text = std::get<std::string>(Values::toValue(edit->text()).data);
        const Values::Type wanted = Values::toValue(QVariant(QVariant::Type(type))).type;
        const Values::ReadResult read = Values::readText(text, wanted);
        if (read.ok())
            return Values::toVariant(read.value);
        fault = text.empty() ? ValueEditor::tr("A number is missing.") : Values::errorText(read);
        return {};
    }

    void setValue(const QVariant& value) override
    {
        edit->setText(QString::fromStdString(Values::toText(Values::toValue(value))));
    }

private:
    int type;
    QLineEdit* edit; // owned by the editor
};

// A check box that says which of the two it stands for.
class TruthValueEditor : public ValueEditor
{
public:
    TruthValueEditor() : box(new QCheckBox(QStringLiteral("false"), this))
    {
        fillWith(*box);
        connect(box, &QCheckBox::toggled, this, [this](bool on) {
            box->setText(on ? QStringLiteral("true") : QStringLiteral("false"));
            emit edited();
        });
    }

    QVariant getValue(QString& fault) const override
    {
        fault.clear();
        return box->isChecked();
    }

    void setValue(const QVariant& value) override { box->setChecked(value.toBool()); }

private:
    QCheckBox* box; // owned by the editor
};

// Says what an attribute without a value is; there is nothing to enter.
class NullValueEditor : public ValueEditor
{
public:
    NullValueEditor()
    {
        auto* const explanation =
            new PlainLabel(ValueEditor::tr("The first value that is written gives the attribute its type."));
        explanation->setWordWrap(true);
        fillWith(*explanation);
        setFocusProxy(nullptr);
    }

    QVariant getValue(QString& fault) const override
    {
        fault.clear();
        return {};
    }

    void setValue(const QVariant& /*value*/) override {}
};

template <typename Editor>
std::unique_ptr<ValueEditor> make(int metaType)
{
    if constexpr (std::is_constructible_v<Editor, int>)
        return std::make_unique<Editor>(metaType);
    else
        return std::make_unique<Editor>();
}

} // namespace

QVector<ValueEditor::Kind> ValueEditor::kinds()
{
    return {
        {QMetaType::QString, tr("Text"), make<LineValueEditor>},
        {QMetaType::Bool, tr("True or false"), make<TruthValueEditor>},
        {QMetaType::LongLong, tr("Integer"), make<LineValueEditor>},
        {QMetaType::ULongLong, tr("Unsigned integer"), make<LineValueEditor>},
        {QMetaType::Double, tr("Real number"), make<LineValueEditor>},
        {QMetaType::QStringList, tr("List of texts"), make<ListValueEditor>},
        {QMetaType::QByteArray, tr("Bytes"), make<BytesValueEditor>},
        {QMetaType::QDate, tr("Date"), make<DateTimeValueEditor>},
        {QMetaType::QTime, tr("Time"), make<DateTimeValueEditor>},
        {QMetaType::QDateTime, tr("Date and time"), make<DateTimeValueEditor>},
        {QMetaType::UnknownType, tr("No value yet"), make<NullValueEditor>},
    };
}

void ValueEditor::fillWith(QWidget& field)
{
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(&field);
    setFocusProxy(&field);
}

} // namespace Utilities::ModelViews::Widgets
