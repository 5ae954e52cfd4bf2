#include "host/Utilities/ModelViews/editors/BytesSpelling.h"

#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <string>

namespace Utilities::ModelViews::Widgets {

namespace Values = FrameworkCore::Values;

namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("BytesSpelling", text);
}

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
        fault = translated("\"%1\" is not a hexadecimal digit (0 to 9, A to F).").arg(wrong.captured());
    else if (digits.size() % 2 != 0)
        fault = translated("The last byte has one digit only; each byte has two.");
    return fault.isEmpty() ? QByteArray::fromHex(digits.toLatin1()) : QByteArray();
}

QByteArray readBase64(const QString& signs, QString& fault)
{
    const auto read = QByteArray::fromBase64Encoding(signs.toUtf8(), QByteArray::AbortOnBase64DecodingErrors);
    if (read.decodingStatus == QByteArray::Base64DecodingStatus::Ok)
        return read.decoded;
    fault =
        read.decodingStatus == QByteArray::Base64DecodingStatus::IllegalCharacter
            ? translated("This is not Base64: a sign is none of A to Z, a to z, 0 to 9, \"+\", \"/\", \"=\".")
            : translated("This is not Base64: its length is wrong; signs are missing at the end.");
    return {};
}

QByteArray readEscapedText(const QString& text, QString& fault)
{
    const Values::ReadResult read =
        Values::readText(std::get<std::string>(Values::toValue(text).data), Values::Type::ByteArray);
    fault = QString::fromStdString(read.error);
    return read.ok() ? Values::toVariant(read.value).toByteArray() : QByteArray();
}

} // namespace

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

} // namespace Utilities::ModelViews::Widgets
