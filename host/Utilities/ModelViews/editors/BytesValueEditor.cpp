#include "host/Utilities/ModelViews/editors/BytesValueEditor.h"

#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"

#include <QComboBox>
#include <QGridLayout>
#include <QPlainTextEdit>
#include <QRegularExpression>

#include <string>

namespace Utilities::ModelViews::Widgets {

namespace Values = FrameworkCore::Values;

namespace {

enum class BytesSpelling { Hexadecimal, Base64, Text };

QString withoutBlanks(QString text)
{
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    return text.remove(blanks);
}

QByteArray readHexadecimal(const QString& digits, QString& fault)
{
    static const QRegularExpression noDigit(QStringLiteral("[^0-9A-Fa-f]"));
    const QRegularExpressionMatch wrong = noDigit.match(digits);
    if (wrong.hasMatch())
        fault =
            BytesValueEditor::tr("\"%1\" is not a hexadecimal digit (0 to 9, A to F).").arg(wrong.captured());
    else if (digits.size() % 2 != 0)
        fault = BytesValueEditor::tr("The last byte has one digit only; each byte has two.");
    return fault.isEmpty() ? QByteArray::fromHex(digits.toLatin1()) : QByteArray();
}

QByteArray readBase64(const QString& signs, QString& fault)
{
    const auto read = QByteArray::fromBase64Encoding(signs.toUtf8(), QByteArray::AbortOnBase64DecodingErrors);
    if (read.decodingStatus == QByteArray::Base64DecodingStatus::Ok)
        return read.decoded;
    fault =
        read.decodingStatus == QByteArray::Base64DecodingStatus::IllegalCharacter
            ? BytesValueEditor::tr(
                  "This is not Base64: a sign is none of A to Z, a to z, 0 to 9, \"+\", \"/\", \"=\".")
            : BytesValueEditor::tr("This is not Base64: its length is wrong; signs are missing at the end.");
    return {};
}

QByteArray readEscapedText(const QString& text, QString& fault)
{
    const Values::ReadResult read =
        Values::readText(std::get<std::string>(Values::toValue(text).data), Values::Type::ByteArray);
    fault = Values::errorText(read);
    return read.ok() ? Values::toVariant(read.value).toByteArray() : QByteArray();
}

// The bytes that a text spells; the fault in words, else empty. Blanks and line ends between the signs of the
// first two spellings do not count.
QByteArray readBytes(const QString& text, BytesSpelling spelling, QString& fault)
{
    fault.clear();
    switch (spelling) {
    case BytesSpelling::Hexadecimal:
        return readHexadecimal(withoutBlanks(text), fault);
    case BytesSpelling::Base64:
        return readBase64(withoutBlanks(text), fault);
    case BytesSpelling::Text:
        break;
    }
    return readEscapedText(text, fault);
}

QString spellBytes(const QByteArray& bytes, BytesSpelling spelling)
{
    switch (spelling) {
    case BytesSpelling::Hexadecimal:
        return QString::fromLatin1(bytes.toHex(' '));
    case BytesSpelling::Base64:
        return QString::fromLatin1(bytes.toBase64());
    case BytesSpelling::Text:
        break;
    }
    return QString::fromStdString(Values::toText(Values::toValue(bytes)));
}

} // namespace

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
