#include "widgets/ReadableValue.h"

#include "host/Utilities/ModelViews/TextBeginning.h"

#include <QJsonDocument>
#include <QStringList>

namespace Widgets {

namespace {

// In characters, of a text before and after its layout.
constexpr int longestToLayOut = 1 << 17;
constexpr qint64 longestLaidOut = 1 << 20;

// What QTextDocument breaks into lines takes time with the square of an unbroken text.
constexpr int longestBeginning = 10000;
constexpr int mostLines = 1000;

// The length of a JSON text with its lines indented, which is far more than its own when it is deeply nested.
qint64 indentedLength(const QString& json)
{
    constexpr int indent = 4;
    qint64 length = json.size();
    int depth = 0;
    bool isInString = false;
    for (int i = 0; i < json.size(); ++i) {
        const ushort character = json.at(i).unicode();
        if (character == '"')
            isInString = !isInString;
        else if (isInString)
            i += character == '\\' ? 1 : 0;
        else if (character == '[' || character == '{')
            length += indent * ++depth;
        else if (character == ']' || character == '}')
            length += indent * --depth;
        else if (character == ',')
            length += indent * depth;
    }
    return length;
}

QString breakIntoLines(QString text)
{
    text.replace(QLatin1String(";"), QLatin1String(";\n\t"));
    text.replace(QLatin1String("{"), QLatin1String(" {\n\t"));
    text.replace(QLatin1String("}"), QLatin1String(" }\n\t"));
    return text;
}

bool isOneLineWithBraces(const QString& text)
{
    return text.contains(QLatin1Char(';')) && text.contains(QLatin1Char('{')) &&
           text.contains(QLatin1Char('}')) && !text.contains(QLatin1Char('\n'));
}

} // namespace

QString valueText(const QVariant& value)
{
    return value.type() == QVariant::StringList ? value.toStringList().join(QLatin1Char(','))
                                                : value.toString();
}

QString leadingText(const QVariant& value)
{
    constexpr int mostBytes = 4; // of a character
    if (value.type() == QVariant::ByteArray)
        return QString::fromUtf8(value.toByteArray().left((longestToLayOut + 1) * mostBytes));
    return value.type() == QVariant::StringList
               ? Utilities::ModelViews::joinedBeginning(value.toStringList(), longestToLayOut)
               : value.toString();
}

QString readableText(const QString& text)
{
    if (text.size() > longestToLayOut)
        return text;
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
    if (!document.isNull() && !document.isEmpty())
        return indentedLength(text) > longestLaidOut
                   ? text
                   : QString::fromUtf8(document.toJson(QJsonDocument::Indented));
    return isOneLineWithBraces(text) ? breakIntoLines(text) : text;
}

QString beginningOf(const QString& text)
{
    return Utilities::ModelViews::beginningOf(text, longestBeginning, mostLines);
}

} // namespace Widgets
