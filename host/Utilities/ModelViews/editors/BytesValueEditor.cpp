#include "host/Utilities/ModelViews/editors/BytesValueEditor.h"

#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"
#include "host/Utilities/ModelViews/editors/BytesSpelling.h"

#include <QComboBox>
#include <QGridLayout>
#include <QPlainTextEdit>

namespace Utilities::ModelViews::Widgets {

BytesValueEditor::BytesValueEditor(QWidget* parent)
    : ValueEditor(parent), spellings(new QComboBox(this)), edit(new QPlainTextEdit(this)),
      count(new PlainLabel(this))
{
    spellings->setObjectName(QStringLiteral("cbSpelling"));
    edit->setObjectName(QStringLiteral("edtValue"));
    spellings->addItems(
        {tr("Hexadecimal, as in 0a ff"), tr("Base64, as in Cv8="), tr("Text with escapes, as in a\\x00b")});
    edit->setTabChangesFocus(true);
    edit->setFixedHeight(5 * edit->fontMetrics().lineSpacing());
    auto* const layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(edit, 0, 0, 1, 2);
    layout->addWidget(spellings, 1, 0);
    layout->addWidget(count, 1, 1);
    layout->setColumnStretch(1, 1);
    setFocusProxy(edit);
    connect(edit, &QPlainTextEdit::textChanged, this, &BytesValueEditor::showCount);
    connect(edit, &QPlainTextEdit::textChanged, this, &ValueEditor::edited);
    connect(spellings, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &BytesValueEditor::changeSpelling);
    showCount();
}

QVariant BytesValueEditor::getValue(QString& fault) const
{
    const QByteArray bytes = readBytes(edit->toPlainText(), BytesSpelling(current), fault);
    return fault.isEmpty() ? QVariant(bytes) : QVariant();
}

void BytesValueEditor::setValue(const QVariant& value)
{
    edit->setPlainText(spellBytes(value.toByteArray(), BytesSpelling(current)));
}

// What spells no bytes stays as it is, to be read in the new spelling.
void BytesValueEditor::changeSpelling(int spelling)
{
    QString fault;
    const QByteArray bytes = readBytes(edit->toPlainText(), BytesSpelling(current), fault);
    current = spelling;
    if (fault.isEmpty())
        setValue(bytes);
    showCount();
    emit edited();
}

void BytesValueEditor::showCount()
{
    QString fault;
    const int size = getValue(fault).toByteArray().size();
    count->setText(!fault.isEmpty() ? QString() : size == 1 ? tr("1 byte") : tr("%1 bytes").arg(size));
}

} // namespace Utilities::ModelViews::Widgets
