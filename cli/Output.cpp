#include "cli/Output.h"

#include "cli/Messages.h"
#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace CommandLine {

void Output::line(const QString& text)
{
    bytes(text.toStdString() + '\n');
}

void Output::bytes(const std::string& bytes)
{
    std::fwrite(bytes.data(), 1, bytes.size(), stdout);
}

std::string Output::valueText(const QVariant& value)
{
    return FrameworkCore::Values::toText(FrameworkCore::Values::toValue(value));
}

QString Output::valueInLine(const QVariant& value)
{
    const QString text = QString::fromStdString(valueText(value));
    QString line;
    for (const QChar c : text) {
        if (c == QLatin1Char('\\'))
            line += QLatin1String("\\\\");
        else if (c == QLatin1Char('\n'))
            line += QLatin1String("\\n");
        else if (c.unicode() < 0x20 || c.unicode() == 0x7f)
            line += QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0'));
        else
            line += c;
    }
    return line;
}

bool Output::flush()
{
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)
        return true;
    Messages::tell(
        QStringLiteral("the output cannot be written: %1").arg(QString::fromLocal8Bit(std::strerror(errno))));
    return false;
}

} // namespace CommandLine
