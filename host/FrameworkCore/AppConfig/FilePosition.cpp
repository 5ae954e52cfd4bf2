#include "host/FrameworkCore/AppConfig/FilePosition.h"

#include <QRegularExpression>

namespace FrameworkCore::AppConfig {

QString FilePosition::toText() const
{
    return file + QStringLiteral(":%1:%2").arg(line).arg(column);
}

std::optional<FilePosition> FilePosition::parse(const QString& text)
{
    static const QRegularExpression form(
        QStringLiteral("^(.+?):([1-9][0-9]{0,8})(?::([1-9][0-9]{0,8}))?(?::.*)?$"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return {};
    const QString column = match.captured(3);
    return FilePosition{match.captured(1), match.captured(2).toInt(), column.isEmpty() ? 1 : column.toInt()};
}

} // namespace FrameworkCore::AppConfig
