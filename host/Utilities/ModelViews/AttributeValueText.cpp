#include "host/Utilities/ModelViews/AttributeValueText.h"

#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "host/Utilities/ModelViews/TextBeginning.h"

#include <QStringList>

#include <algorithm>

namespace Utilities::ModelViews {

namespace Values = FrameworkCore::Values;

namespace {

constexpr int longestText = 4096; // characters

// A visible sign for what would break or hide the line.
QChar shown(QChar character)
{
    const ushort code = character.unicode();
    if (code >= 0x20 && code < 0x7F) // nearly all, and quicker
        return character;
    if (code == '\n' || code == QChar::LineSeparator || code == QChar::ParagraphSeparator)
        return QChar(0x21B5); // a return arrow
    if (code == '\t')
        return QLatin1Char(' ');
    if (code < 0x20)
        return QChar(0x2400 + code); // the picture of that control character
    return character.category() == QChar::Other_Control ? QChar(QChar::ReplacementCharacter) : character;
}

QString textOf(const QVariant& value)
{
    const auto attributeValue = Values::toAttributeVariant(value);
    return attributeValue ? QString::fromStdString(Values::toText(Values::toValue(*attributeValue)))
                          : value.toString();
}

// Cut where it is longer, but not to that length yet, so that the cut is noticed.
QString rawText(const QVariant& value, int longest)
{
    switch (value.userType()) {
    case QMetaType::QString:
        return value.toString();
    case QMetaType::QStringList:
        return joinedBeginning(value.toStringList(), longest);
    case QMetaType::QByteArray:
        return textOf(value.toByteArray().left(longest + 1));
    default:
        return textOf(value);
    }
}

// Whether something was cut off.
bool truncate(QString& text, int longest)
{
    const bool isLong = text.size() > longest;
    if (isLong)
        text.truncate(longest);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    return isLong;
}

const QChar ellipsis(0x2026);

} // namespace

QString attributeValueText(const QVariant& value)
{
    QString text = rawText(value, longestText);
    const bool isLong = truncate(text, longestText);
    std::transform(text.begin(), text.end(), text.begin(), shown);
    return isLong ? text + ellipsis : text;
}

QString attributeValueLines(const QVariant& value, int longest, int mostLines)
{
    QString text = rawText(value, longest);
    bool isLong = truncate(text, longest);
    int lines = 1;
    for (auto character = text.begin(); character != text.end(); ++character) {
        if (*character != QLatin1Char('\n')) {
            *character = shown(*character);
        } else if (++lines > mostLines) {
            text.truncate(int(character - text.begin()));
            isLong = true;
            break;
        }
    }
    return isLong ? text + ellipsis : text;
}

} // namespace Utilities::ModelViews
