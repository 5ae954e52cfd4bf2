#include "cli/ManPage.h"

#include "cli/CommandTable.h"
#include "cli/Usage.h"

#include <QStringList>

namespace CommandLine {

namespace {

// Text as it stands, whatever it holds: roff reads "\" and, where a line begins, "." and "'" as its own.
QString escaped(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\e"));
    text.replace(QLatin1Char('-'), QLatin1String("\\-"));
    text.replace(QLatin1Char('\''), QLatin1String("\\(aq"));
    text.replace(QLatin1Char('^'), QLatin1String("\\(ha"));
    text.replace(QLatin1Char('~'), QLatin1String("\\(ti"));
    return text.startsWith(QLatin1Char('.')) ? QStringLiteral("\\&") + text : text;
}

QString escaped(std::string_view text)
{
    return escaped(toText(text));
}

QString optionList(const std::vector<Option>& options)
{
    QString list;
    for (const Option& option : options) {
        list += QStringLiteral(".TP\n\\fB%1\\fR").arg(escaped(option.name));
        if (!option.argument.empty())
            list += QStringLiteral(" \\fI%1\\fR").arg(escaped(option.argument));
        list += QLatin1Char('\n') + escaped(option.text) + QStringLiteral(".\n");
    }
    return list;
}

QString sectionFor(const Command& command)
{
    QString section = QStringLiteral(".SS \"%1\"\n").arg(escaped(command.name));
    for (const Command::Form& form : command.forms)
        section += QStringLiteral("\\fB%1\\fR\n.br\n").arg(escaped(Usage::ofForm(command, form)));
    const QString summary = escaped(command.summary);
    section += QStringLiteral(".PP\n%1.\n").arg(summary.left(1).toUpper() + summary.mid(1));
    const QStringList paragraphs = toText(command.description).split(QLatin1Char('\n'));
    for (const QString& paragraph : paragraphs)
        section += QStringLiteral(".PP\n") + escaped(paragraph) + QLatin1Char('\n');
    section += optionList(command.options);
    if (!command.examples.empty())
        section += QStringLiteral(".PP\n.EX\n");
    for (const std::string_view example : command.examples)
        section += QStringLiteral("    ") + escaped(example) + QLatin1Char('\n');
    return command.examples.empty() ? section : section + QStringLiteral(".EE\n");
}

} // namespace

QString ManPage::text()
{
    QString page =
        QStringLiteral(".TH VANTRY 1 \"\" \"Vantry " VANTRY_VERSION "\" \"User Commands\"\n"
                       ".SH NAME\nvantry \\- read, edit, compare and convert configuration files\n"
                       ".SH SYNOPSIS\n\\fBvantry\\fR [\\fB\\-\\-backend\\fR "
                       "\\fINAME\\fR=\\fIFILE\\fR[:ro|wo|rw]]... \\fICOMMAND\\fR ...\n"
                       ".SH DESCRIPTION\n"
                       "Reads, edits, compares and converts configuration files of the formats ini, "
                       "json, xml and txt by attribute. An edit of one value changes the bytes of "
                       "that value; everything else in the file stays as its author left it.\n"
                       ".SH COMMANDS\n");
    for (const Command& command : CommandTable::commands()) {
        if (!command.isHidden)
            page += sectionFor(command);
    }
    page += QStringLiteral(".SH OPTIONS OF ALL COMMANDS\n") + optionList(CommandTable::commonOptions());
    for (const Topic& topic : CommandTable::topics()) {
        page += QStringLiteral(".SH %1\n").arg(escaped(toText(topic.title).toUpper()));
        bool isFirst = true;
        for (const std::string_view paragraph : topic.paragraphs) {
            page += (isFirst ? QString() : QStringLiteral(".PP\n")) + escaped(paragraph) + QLatin1Char('\n');
            isFirst = false;
        }
    }
    return page;
}

} // namespace CommandLine
