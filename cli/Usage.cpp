#include "cli/Usage.h"

#include "cli/CommandTable.h"

#include <QStringList>

#include <algorithm>

namespace CommandLine {

namespace {

constexpr int screenWidth = 79;

// The text in lines that fit on the screen; all but the first are indented.
QString wrap(const QString& text, int indent, int firstColumn)
{
    QString wrapped;
    int column = firstColumn;
    bool isFirst = true;
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& word : words) {
        if (!isFirst && column + 1 + word.size() > screenWidth) {
            wrapped += QLatin1Char('\n') + QString(indent, QLatin1Char(' '));
            column = indent;
            isFirst = true;
        }
        if (!isFirst)
            wrapped += QLatin1Char(' ');
        column += word.size() + (isFirst ? 0 : 1);
        wrapped += word;
        isFirst = false;
    }
    return wrapped + QLatin1Char('\n');
}

// Two columns, as for "name  what it is".
QString row(const QString& left, const QString& right, int width)
{
    const QString start = QStringLiteral("  ") + left.leftJustified(width) + QStringLiteral("  ");
    const int indent = width + 4;
    if (left.size() > width)
        return QStringLiteral("  %1\n%2%3")
            .arg(left, QString(indent, QLatin1Char(' ')), wrap(right, indent, indent));
    return start + wrap(right, indent, indent);
}

QString optionRows(const std::vector<Option>& options)
{
    constexpr int width = 20;
    QString rows;
    for (const Option& option : options)
        rows += row(Usage::ofOption(option), toText(option.text), width);
    return rows;
}

QString paragraphs(std::string_view text)
{
    QString result;
    const QStringList lines = toText(text).split(QLatin1Char('\n'));
    for (const QString& line : lines)
        result += QLatin1Char('\n') + wrap(line, 0, 0);
    return result;
}

} // namespace

QString toText(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), int(utf8.size()));
}

QString Usage::ofForm(const Command& command, const Command::Form& form)
{
    QString usage = QStringLiteral("vantry ") + toText(command.name);
    for (const Argument& argument : form) {
        const QString name = toText(argument.name);
        switch (argument.count) {
        case Argument::Count::One:
            usage += QLatin1Char(' ') + name;
            break;
        case Argument::Count::Optional:
            usage += QStringLiteral(" [%1]").arg(name);
            break;
        case Argument::Count::OneOrMore:
            usage += QStringLiteral(" %1...").arg(name);
            break;
        }
    }
    return usage;
}

QString Usage::ofOption(const Option& option)
{
    QString usage = toText(option.name);
    if (!option.argument.empty())
        usage += QLatin1Char(' ') + toText(option.argument);
    return usage;
}

QString Usage::helpFor(const Command& command)
{
    QString help;
    for (const Command::Form& form : command.forms)
        help += (help.isEmpty() ? QStringLiteral("Usage: ") : QStringLiteral("       ")) +
                ofForm(command, form) + QLatin1Char('\n');
    const QString summary = toText(command.summary);
    help += QLatin1Char('\n') + summary.left(1).toUpper() + summary.mid(1) + QStringLiteral(".\n");
    help += paragraphs(command.description);
    if (!command.options.empty())
        help += QStringLiteral("\nOptions:\n") + optionRows(command.options);
    help += QStringLiteral("\nOptions of all commands:\n") + optionRows(CommandTable::commonOptions());
    if (!command.examples.empty())
        help += QStringLiteral("\nExamples:\n");
    for (const std::string_view example : command.examples)
        help += QStringLiteral("  ") + toText(example) + QLatin1Char('\n');
    return help;
}

QString Usage::overview()
{
    QString help =
        QStringLiteral("Usage: vantry [--backend NAME=FILE[:ro|wo|rw]]... COMMAND ...\n\n") +
        wrap(QStringLiteral("Reads, edits, compares and converts configuration files (ini, json, xml, "
                            "txt) by attribute."),
             0, 0) +
        QStringLiteral("\nCommands:\n");
    constexpr int width = 10;
    for (const Command& command : CommandTable::commands()) {
        if (!command.isHidden)
            help += row(toText(command.name), toText(command.summary), width);
    }
    help += QStringLiteral("\nOptions of all commands:\n") + optionRows(CommandTable::commonOptions());
    for (const Topic& topic : CommandTable::topics()) {
        help += QLatin1Char('\n') + toText(topic.title) + QStringLiteral(":\n");
        for (const std::string_view paragraph : topic.paragraphs)
            help += QStringLiteral("  ") + wrap(toText(paragraph), 2, 2);
    }
    return help + QStringLiteral("\n'vantry COMMAND --help' tells more of a command.\n");
}

} // namespace CommandLine
