#include "cli/Output.h"

#include "cli/Texts.h"
#include "host/FrameworkCore/Values/PrintableText.h"
#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace CommandLine {

namespace {

void write(const std::string& bytes, FILE* stream = stdout)
{
    std::fwrite(bytes.data(), 1, bytes.size(), stream);
}

} // namespace

void Output::message(const QString& text)
{
    write("vantry: " + FrameworkCore::Values::printableLine(text.toStdString()) + '\n', stderr);
}

void Output::line(const QString& text)
{
    write(FrameworkCore::Values::printableLine(text.toStdString()) + '\n');
}

void Output::bytes(const std::string& bytes)
{
    static const bool isTerminal = ::isatty(STDOUT_FILENO) == 1;
    write(isTerminal ? FrameworkCore::Values::printableLines(bytes) : bytes);
}

std::string Output::valueText(const QVariant& value)
{
    return FrameworkCore::Values::toText(FrameworkCore::Values::toValue(value));
}

QString Output::valueInLine(const QVariant& value)
{
    std::string text;
    for (const char c : valueText(value))
        text.append(c == '\\' ? 2 : 1, c);
    return QString::fromStdString(FrameworkCore::Values::printableLine(text));
}

bool Output::flush()
{
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)
        return true;
    message(Texts::tr("the output cannot be written: %1").arg(QString::fromLocal8Bit(std::strerror(errno))));
    return false;
}

} // namespace CommandLine
