#include "widgets/ReadableValue.h"

#include <QJsonDocument>
#include <QStringList>

namespace Widgets {

namespace {

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

QString readableValue(const QVariant& value)
{
    const QString text =
        value.type() == QVariant::StringList ? value.toStringList().join(QLatin1Char(',')) : value.toString();
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
    if (!document.isNull() && !document.isEmpty())
        return QString::fromUtf8(document.toJson(QJsonDocument::Indented));
    return isOneLineWithBraces(text) ? breakIntoLines(text) : text;
}

} // namespace Widgets
