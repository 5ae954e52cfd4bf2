#include "repository/RefusalText.h"

#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/Backend.h"
#include "repository/PathRules.h"

#include <cmath>
#include <limits>

namespace Repository {

using FrameworkCore::Values::Type;

namespace {

constexpr int mostShown = 80;

QString between(const QString& line, QLatin1String begin, QLatin1String end)
{
    const int at = line.startsWith(begin) ? line.indexOf(end, begin.size()) : -1;
    return at < 0 ? QString() : line.mid(begin.size(), at - begin.size());
}

QString describe(Type type)
{
    const std::string_view words = FrameworkCore::Values::describeType(type);
    return QString::fromLatin1(words.data(), int(words.size()));
}

// What attributes of the type hold; the bounds only where they matter.
QString describeContent(const QVariant& value, int metaType)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    const bool isWhole = isNumber && std::trunc(number) == number;
    if (isWhole && metaType == QMetaType::LongLong)
        return QStringLiteral("a whole number from %1 to %2")
            .arg(std::numeric_limits<qlonglong>::min())
            .arg(std::numeric_limits<qlonglong>::max());
    if (isWhole && metaType == QMetaType::ULongLong)
        return QStringLiteral("a whole number from 0 to %1").arg(std::numeric_limits<qulonglong>::max());
    const auto empty = FrameworkCore::Values::convertVariant(QVariant(), metaType);
    const QString words = describe(FrameworkCore::Values::toValue(empty.value_or(QVariant())).type);
    switch (metaType) {
    case QMetaType::QDate:
        return words + QStringLiteral(" as in 2024-12-31");
    case QMetaType::QTime:
        return words + QStringLiteral(" as in 23:59:59");
    case QMetaType::QDateTime:
        return words + QStringLiteral(" as in 2024-12-31T23:59:59");
    default:
        return words;
    }
}

} // namespace

QString RefusalText::shortened(const QString& text)
{
    constexpr int ending = 15;
    QString line = text;
    if (text.size() > mostShown)
        line = text.left(mostShown - ending) + QStringLiteral("...") + text.right(ending);
    line.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    line.replace(QLatin1Char('\r'), QLatin1String("\\r"));
    line.replace(QLatin1Char('\t'), QLatin1String("\\t"));
    return line;
}

QString RefusalText::shownPath(const QString& path)
{
    constexpr int most = 1000;
    constexpr int end = 100;
    return path.size() <= most ? path : path.left(end) + QStringLiteral("...") + path.right(end);
}

QString RefusalText::shown(const QVariant& value)
{
    const auto attributeValue = FrameworkCore::Values::toAttributeVariant(value);
    if (!attributeValue)
        return QStringLiteral("a value of the type %1").arg(QLatin1String(value.typeName()));
    const auto typed = FrameworkCore::Values::toValue(*attributeValue);
    if (typed.type == Type::Null)
        return describe(typed.type);
    const QString text = typed.type == Type::String
                             ? attributeValue->toString()
                             : QString::fromStdString(FrameworkCore::Values::toText(typed));
    QString kind = describe(typed.type);
    if (text.size() > mostShown)
        kind += QStringLiteral(", %1 characters long").arg(text.size());
    return QStringLiteral("'%1' (%2)").arg(shortened(text), kind);
}

QString RefusalText::ofValue(const QString& path, const QVariant& value, bool isHidden, const QString& reason)
{
    return isHidden ? QStringLiteral("'%1' was not set: %2").arg(shownPath(path), reason)
                    : QStringLiteral("'%1' was not set to %2: %3").arg(shownPath(path), shown(value), reason);
}

QString RefusalText::unsaved(const QString& backend, const QString& reason)
{
    return QStringLiteral("The backend '%1' was not saved: %2").arg(backend, reason);
}

QString RefusalText::pathOf(const QString& line)
{
    return between(line, QLatin1String("'"), QLatin1String("' was not set"));
}

QString RefusalText::unsavedBackendOf(const QString& line)
{
    return between(line, QLatin1String("The backend '"), QLatin1String("' was not saved: "));
}

QString RefusalText::wrongType(const QVariant& value, int wantedType)
{
    return QStringLiteral("it holds %1, which this cannot become without loss")
        .arg(describeContent(value, wantedType));
}

QString RefusalText::noAttributeType()
{
    return QStringLiteral(
        "an attribute holds true or false, a number, a text, a list of texts, bytes, a date "
        "or a time, and nothing else");
}

QString RefusalText::readOnly(const Node& node)
{
    if (isAtOrBelow(node.path, ownRoot))
        return ownTree();
    if (node.backend && !isWritable(node.backend->getAccessMode()))
        return readOnly(*node.backend);
    return QStringLiteral("'%1' was created as read-only").arg(node.path);
}

QString RefusalText::readOnly(const Backend& backend)
{
    return QStringLiteral("the backend '%1' is read-only; to change it, open its file %2 for writing")
        .arg(backend.getName(), backend.getDescription().filePath);
}

QString RefusalText::unfit(const QVariant& value, bool isHidden, const QString& documentReason)
{
    if (isHidden)
        return QStringLiteral("its file has no form for the value at this place");
    const QString text = value.toString();
    return text.size() > mostShown ? QString(documentReason).replace(text, shortened(text)) : documentReason;
}

QString RefusalText::notFound()
{
    return QStringLiteral("there is no such attribute");
}

QString RefusalText::invalidPath(QStringView path)
{
    if (isTooDeep(path))
        return QStringLiteral("it has more than %1 names, or too many characters for its depth")
            .arg(deepestPath);
    return QStringLiteral("a path is names joined by '.', none of them empty and none with '*' in it");
}

QString RefusalText::ownTree()
{
    return QStringLiteral("it belongs to the repository itself, which alone changes it");
}

} // namespace Repository
