#include "host/Utilities/ModelViews/monitor/WatchedAttributeCells.h"

#include "host/FrameworkCore/AppConfig/AttributePath.h"
#include "host/Utilities/ModelViews/AttributeValueText.h"
#include "host/Utilities/ModelViews/ToolTipText.h"
#include "host/Utilities/ModelViews/tree/AttributeTreeCells.h"

#include <QColor>
#include <QDateTime>
#include <QFont>

#include <utility>

namespace Utilities::ModelViews {

using FrameworkCore::AppConfig::AccessMode;
using Content = WatchedAttribute::Content;

namespace {

// Grounds and texts come in pairs, so that they can be read on rows of any colour.
const QColor litGround(0xff, 0xe0, 0x66);
const QColor litText(Qt::black);
const QColor missingGround(0xd4, 0xd4, 0xd4);
const QColor missingText(0x55, 0x55, 0x55);

// As much of a value as a tool tip can show on a screen.
constexpr int longestToolTip = 4000;
constexpr int mostToolTipLines = 50;

bool isNumber(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

QDateTime timeOf(const WatchedAttribute::Changes& changes)
{
    return QDateTime::fromMSecsSinceEpoch(changes.lastTime);
}

} // namespace

const Content& WatchedAttributeCells::contentOf(WatchedAttribute& attribute) const
{
    if (attribute.content)
        return *attribute.content;
    Content& content = attribute.content.emplace(Content());
    if (const auto known = reader ? reader->getAttribute(attribute.path) : nullptr) {
        content.exists = true;
        content.access = known->getAccessMode();
        content.type = known->getDataType();
        if (isReadable(content.access))
            content.value = known->getValue();
        content.text = attributeValueText(content.value);
    }
    return content;
}

QVariant WatchedAttributeCells::cell(WatchedAttribute& attribute, int column, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return text(attribute, column);
    case Qt::EditRole:
        return column == Value ? contentOf(attribute).value : text(attribute, column);
    case Qt::ToolTipRole:
        return toolTip(attribute, column);
    case Qt::BackgroundRole:
    case Qt::ForegroundRole:
        return colour(attribute, column, role);
    case Qt::TextAlignmentRole:
        if (column == Value && isNumber(contentOf(attribute).value))
            return int(Qt::AlignRight | Qt::AlignVCenter);
        return {};
    case Qt::FontRole:
        if (column <= Value && contentOf(attribute).access == AccessMode::ReadOnly) {
            QFont font; // the view resolves it against its own
            font.setItalic(true);
            return font;
        }
        return {};
    case Qt::AccessibleTextRole:
        return accessibleText(attribute, column);
    case Qt::AccessibleDescriptionRole:
        return attribute.path;
    default:
        return {};
    }
}

QVariant WatchedAttributeCells::text(WatchedAttribute& attribute, int column) const
{
    switch (column) {
    case Name:
        return FrameworkCore::AppConfig::nameOf(attribute.path);
    case Value:
        return contentOf(attribute).text;
    case Type:
        return contentOf(attribute).type;
    case LastChange: {
        const WatchedAttribute::Changes changes = attribute.getChanges();
        if (changes.count == 0)
            return {};
        return QStringLiteral("%1 (%2)").arg(timeOf(changes).toString(QStringLiteral("HH:mm:ss.zzz")),
                                             QString::number(changes.count));
    }
    case Path:
        return attribute.path;
    default:
        return {};
    }
}

QVariant WatchedAttributeCells::toolTip(WatchedAttribute& attribute, int column) const
{
    const Content& content = contentOf(attribute);
    const WatchedAttribute::Changes changes = attribute.getChanges();
    if (column == LastChange && changes.count > 0)
        return toolTipText(tr("Changed last at %1; changes since it is watched: %2")
                               .arg(timeOf(changes).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")),
                                    QString::number(changes.count)));
    QStringList lines{attribute.path};
    if (!content.exists) {
        lines.append(tr("No such attribute. The row comes alive when it is created."));
    } else {
        lines.append(tr("Type: %1").arg(content.type.isEmpty() ? tr("none yet") : content.type));
        lines.append(tr("Access: %1").arg(AttributeTreeCells::accessText(content.access)));
    }
    if (column == Value && !content.text.isEmpty()) {
        lines.append(QString());
        lines.append(attributeValueLines(content.value, longestToolTip, mostToolTipLines));
    }
    return toolTipText(lines.join(QLatin1Char('\n')));
}

QVariant WatchedAttributeCells::colour(WatchedAttribute& attribute, int column, int role) const
{
    const bool isGround = role == Qt::BackgroundRole;
    if (!contentOf(attribute).exists)
        return isGround ? missingGround : missingText;
    if (column == Value && attribute.isLit)
        return isGround ? litGround : litText;
    return {};
}

QVariant WatchedAttributeCells::accessibleText(WatchedAttribute& attribute, int column) const
{
    if (column != Name)
        return text(attribute, column);
    const Content& content = contentOf(attribute);
    QString spoken = text(attribute, Name).toString();
    if (!content.exists)
        spoken += tr(", missing");
    else if (content.access != AccessMode::ReadWrite)
        spoken += QStringLiteral(", ") + AttributeTreeCells::accessText(content.access);
    return spoken;
}

QVariant WatchedAttributeCells::header(int column, int role)
{
    if (column < 0 || column >= ColumnCount)
        return {};
    const std::pair<QString, QString> headers[ColumnCount] = {
        {tr("Name"), tr("The attribute's name, the last part of its path; read-only in italics")},
        {tr("Value"), tr("The value as it is now; F2 or a double click edits it")},
        {tr("Type"), tr("The type that the attribute's values have")},
        {tr("Last change"), tr("When the value changed last, and how often it has since it is watched")},
        {tr("Path"), tr("The attribute's place in the tree")},
    };
    const auto& [text, toolTip] = headers[column];
    if (role == Qt::DisplayRole)
        return text;
    return role == Qt::ToolTipRole ? QVariant(toolTipText(toolTip)) : QVariant();
}

} // namespace Utilities::ModelViews
