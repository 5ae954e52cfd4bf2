#include "host/Utilities/ModelViews/AttributeValueText.h"

#include <QDateTime>
#include <QLocale>
#include <QStringList>
#include <QTextCodec>

#include <algorithm>

namespace Utilities::ModelViews {

namespace {

constexpr int longestText = 4096; // characters

bool isControl(QChar character)
{
    return character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

QString textOfBytes(const QByteArray& bytes)
{
    QTextCodec::ConverterState state;
    const QTextCodec* const utf8 = QTextCodec::codecForName("UTF-8");
    const QByteArray head = bytes.left(longestText);
    const QString text = utf8->toUnicode(head.constData(), head.size(), &state);
    const bool isText = state.invalidChars == 0 && std::all_of(text.begin(), text.end(), [](QChar character) {
                            return character.isSpace() || !isControl(character);
                        });
    return isText ? text : QString::fromLatin1(head.toHex(' '));
}

QString rawText(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::QStringList:
        return value.toStringList().join(QLatin1Char(','));
    case QMetaType::Double:
        return QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    case QMetaType::QByteArray:
        return textOfBytes(value.toByteArray());
    case QMetaType::QDate:
        return value.toDate().toString(Qt::ISODate);
    case QMetaType::QTime:
        return value.toTime().toString(Qt::ISODateWithMs);
    case QMetaType::QDateTime:
        return value.toDateTime().toString(Qt::ISODateWithMs);
    default:
        return value.toString();
    }
}

// The text with visible signs for what would break or hide it.
QString onOneLine(QString text)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    for (QChar& character : text) {
        if (character == QLatin1Char('\t'))
            character = QLatin1Char(' ');
        else if (isControl(character))
            character = character.unicode() < 0x20 && character != QLatin1Char('\n')
                            ? QChar(0x2400 + character.unicode()) // the sign of that control character
                            : QChar(0x21B5);                      // a return arrow
    }
    return text;
}

} // namespace

QString attributeValueText(const QVariant& value)
{
    QString text = rawText(value);
    const bool isLong = text.size() > longestText;
    if (isLong)
        text.truncate(longestText);
    text = onOneLine(text);
    return isLong ? text + QChar(0x2026) : text;
}

} // namespace Utilities::ModelViews
