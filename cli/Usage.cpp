#include "cli/Usage.h"

#include "cli/CommandTable.h"
#include "cli/Texts.h"
#include "repository/documents/Formats.h"

#include <QStringList>

namespace CommandLine {

namespace {

// A chapter of the manual that belongs to no command.
struct Topic
{
    std::string_view title;
    std::vector<std::string_view> paragraphs;
};

const std::vector<Topic>& topics()
{
    static const std::vector<Topic> topics{
        {QT_TRANSLATE_NOOP("CommandLine", "Files"),
         {QT_TRANSLATE_NOOP("CommandLine",
                            "FILE is the name of a file, or that of a backend which --backend declares; a "
                            "file of that very "
                            "name is given as ./NAME. A new file is created by the commands that add to it."),
          QT_TRANSLATE_NOOP(
              "CommandLine",
              "It may also be a folder, for the commands that need no whole text: all files below it whose "
              "format is recognised, each at the path of its name, as in \"net%2Ed.a%2Ejson.port\". Links "
              "are "
              "not followed; a file that cannot be read is reported, and left out."),
          QT_TRANSLATE_NOOP(
              "CommandLine",
              "Or it is a part of a distributed store, for the same commands and for \"watch\": "
              "etcd://HOST:PORT/NAME, or etcds:// with TLS, as docs/fleet.md tells. What is set there is "
              "written "
              "at once, and others who have it open see it."),
          QT_TRANSLATE_NOOP("CommandLine", "\"-\" is standard input, the format of which --format says, or "
                                           "else how it begins. What is edited "
                                           "in it goes to standard output as a whole, and nothing else does. "
                                           "As the file that \"convert\" and "
                                           "\"export\" write, \"-\" is standard output."),
          QT_TRANSLATE_NOOP(
              "CommandLine",
              "The file's name decides the format: .json and .jsonc are json; .ini, .conf, .cfg, .desktop, "
              ".service and the like ini; .xml, .svg, .ui, .ts, .pom and the like xml; .txt and .properties "
              "txt; "
              ".toml toml; .yaml and .yml yaml. "
              "A .conf that begins as json or xml does, or is yaml or toml beyond doubt, is that, and so is "
              "a file whose name says nothing; one that looks like ini is ini, and anything else is "
              "refused. --format has the last word."),
          QT_TRANSLATE_NOOP(
              "CommandLine",
              "Files of ini and txt are read as their own programs read them, which their names, places and "
              "first lines tell: .gitconfig as git does, .service as systemd does. --format names such a "
              "dialect, too, as in ini:git."),
          QT_TRANSLATE_NOOP(
              "CommandLine",
              "Files are replaced whole, at one moment, with their owner, mode and symbolic links kept. What "
              "another program has changed meanwhile is kept, too, or the command ends with exit code 3."),
          QT_TRANSLATE_NOOP(
              "CommandLine",
              "A file of more than 256 MiB is refused, so that none takes all memory. --max-size, or the "
              "variable VANTRY_MAX_FILE_SIZE of the environment, sets another limit, up to 2047 MiB.")}},
        {QT_TRANSLATE_NOOP("CommandLine", "Paths"),
         {QT_TRANSLATE_NOOP(
             "CommandLine",
             "A path is the names that lead to an attribute, joined by \".\", as in server.port; \"\" or "
             "\".\" "
             "is the whole file. In a name \".\", \"*\", \"%\" and \";\" are written as %2E, %2A, %25 and "
             "%3B. "
             "The elements of a json array are 0, 1, 2 ...; the second of several entries of one name is "
             "name[2]; @name is an attribute of xml, #text and #value are the text or value of an entry that "
             "has others below it.")}},
        {QT_TRANSLATE_NOOP("CommandLine", "Output"),
         {QT_TRANSLATE_NOOP(
              "CommandLine",
              "Results are on stdout, in UTF-8, paths relative to the file's root. Messages are on stderr, a "
              "line each: \"vantry: FILE:LINE:COLUMN: REASON\", as far as there is a place."),
          QT_TRANSLATE_NOOP(
              "CommandLine",
              "Where a value shares its line with a path, a backslash is written as \"\\\\\". In messages "
              "and in "
              "output by lines a line break is written as \"\\n\", another control character as \"\\x\" and "
              "two "
              "hex digits; control characters beyond ASCII, overrides of writing direction and characters "
              "without width as \"\\u\" and four, or \"\\U\" and eight hex digits. \"get\" and diffs are "
              "printed "
              "as they are, and with these escapes only on a terminal."),
          QT_TRANSLATE_NOOP("CommandLine", "For other programs, --json prints json, and --null ends each "
                                           "result with NUL, as xargs -0 reads "
                                           "it; the help of a command says how its results look then."),
          QT_TRANSLATE_NOOP(
              "CommandLine",
              "Words after \"--\" are not options: vantry set app.ini offset -- --5. A negative number needs "
              "none.")}},
        {QT_TRANSLATE_NOOP("CommandLine", "Exit codes"),
         {QT_TRANSLATE_NOOP("CommandLine", "0: done."),
          QT_TRANSLATE_NOOP("CommandLine", "1: not found, or there are differences."),
          QT_TRANSLATE_NOOP("CommandLine", "2: the command line is wrong."),
          QT_TRANSLATE_NOOP("CommandLine",
                            "3: refused for its type, a rule, access, or a conflict with another program."),
          QT_TRANSLATE_NOOP("CommandLine", "4: a file cannot be read, parsed or written.")}},
    };
    return topics;
}

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
        rows += row(Usage::ofOption(option), Texts::of(option.text), width);
    return rows;
}

QString formats()
{
    QStringList types;
    for (const std::string& type : Repository::Documents::getDocumentTypes())
        types += QString::fromStdString(type);
    return types.join(QLatin1String(", "));
}

QString purpose()
{
    return Texts::tr("Reads, edits, compares and converts configuration files (%1) by attribute.")
        .arg(formats());
}

// Of a part of help.
QString title(const QString& name)
{
    return QStringLiteral("\n%1:\n").arg(name);
}

QString capitalised(const QString& text)
{
    return text.left(1).toUpper() + text.mid(1);
}

QString descriptionOf(const Command& command)
{
    const QString text = Texts::of(command.description);
    return command.insertion ? text.arg(command.insertion()) : text;
}

QString paragraphs(const QString& text)
{
    QString result;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString& line : lines)
        result += QLatin1Char('\n') + wrap(line, 0, 0);
    return result;
}

// Text as it is, whatever it holds: roff reads "\" and, where a line begins, "." and "'" as its own.
QString escaped(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\e"));
    text.replace(QLatin1Char('-'), QLatin1String("\\-"));
    text.replace(QLatin1Char('\''), QLatin1String("\\(aq"));
    text.replace(QLatin1Char('^'), QLatin1String("\\(ha"));
    text.replace(QLatin1Char('~'), QLatin1String("\\(ti"));
    return text.startsWith(QLatin1Char('.')) ? QStringLiteral("\\&") + text : text;
}

QString heading(const QString& title)
{
    return QStringLiteral(".SH \"%1\"\n").arg(escaped(title.toUpper()));
}

QString escaped(std::string_view text)
{
    return escaped(toText(text));
}

QString optionList(const std::vector<Option>& options)
{
    QString list;
    for (const Option& option : options) {
        list += QStringLiteral(".TP\n");
        if (!option.shortName.empty())
            list += QStringLiteral("\\fB%1\\fR, ").arg(escaped(option.shortName));
        list += QStringLiteral("\\fB%1\\fR").arg(escaped(option.name));
        if (!option.argument.empty())
            list += QStringLiteral(" \\fI%1\\fR").arg(escaped(option.argument));
        list += QLatin1Char('\n') + escaped(Texts::of(option.text)) + QStringLiteral(".\n");
    }
    return list;
}

QString sectionFor(const Command& command)
{
    QString section = QStringLiteral(".SS \"%1\"\n").arg(escaped(command.name));
    for (const Command::Form& form : command.forms)
        section += QStringLiteral("\\fB%1\\fR\n.br\n").arg(escaped(Usage::ofForm(command, form)));
    section += QStringLiteral(".PP\n%1.\n").arg(capitalised(escaped(Texts::of(command.summary))));
    const QStringList paragraphs = descriptionOf(command).split(QLatin1Char('\n'));
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

QString toText(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), int(utf8.size()));
}

QString Usage::ofForm(const Command& command, const Command::Form& form)
{
    QString usage = QStringLiteral("vantry ") + toText(command.name);
    for (const Argument& argument : form) {
        const char* const shapes[] = {" %1", " [%1]", " %1..."}; // as the counts
        usage += QLatin1String(shapes[int(argument.count)]).arg(toText(argument.name));
    }
    return usage;
}

QString Usage::ofOption(const Option& option)
{
    QString usage = option.shortName.empty() ? QString() : toText(option.shortName) + QLatin1String(", ");
    usage += toText(option.name);
    if (!option.argument.empty())
        usage += QLatin1Char(' ') + toText(option.argument);
    return usage;
}

QString Usage::helpFor(const Command& command)
{
    const QString usage = Texts::tr("Usage: ");
    QString help;
    for (const Command::Form& form : command.forms)
        help += (help.isEmpty() ? usage : QString(usage.size(), QLatin1Char(' '))) + ofForm(command, form) +
                QLatin1Char('\n');
    help += QStringLiteral("\n%1.\n").arg(capitalised(Texts::of(command.summary)));
    help += paragraphs(descriptionOf(command));
    if (!command.options.empty())
        help += title(Texts::tr("Options")) + optionRows(command.options);
    help += title(Texts::tr("Options of all commands")) + optionRows(CommandTable::commonOptions());
    if (!command.examples.empty())
        help += title(Texts::tr("Examples"));
    for (const std::string_view example : command.examples)
        help += QStringLiteral("  ") + toText(example) + QLatin1Char('\n');
    return help;
}

QString Usage::overview()
{
    QString help = Texts::tr("Usage: ") +
                   QStringLiteral("vantry [--backend NAME=FILE[:ro|wo|rw]]... COMMAND ...\n\n") +
                   wrap(purpose(), 0, 0) + title(Texts::tr("Commands"));
    constexpr int width = 10;
    for (const Command& command : CommandTable::commands()) {
        if (!command.isHidden)
            help += row(toText(command.name), Texts::of(command.summary), width);
    }
    help += title(Texts::tr("Options of all commands")) + optionRows(CommandTable::commonOptions());
    for (const Topic& topic : topics()) {
        help += title(Texts::of(topic.title));
        for (const std::string_view paragraph : topic.paragraphs)
            help += QStringLiteral("  ") + wrap(Texts::of(paragraph), 2, 2);
    }
    return help + QLatin1Char('\n') + Texts::tr("'vantry COMMAND --help' tells more of a command.") +
           QLatin1Char('\n');
}

QString Usage::manPage()
{
    QString page =
        QStringLiteral(".TH VANTRY 1 \"\" \"Vantry " VANTRY_VERSION "\" \"%1\"\n")
            .arg(escaped(Texts::tr("User Commands"))) +
        QStringLiteral(".nh\n.ad l\n") + // a word is not split, least of all by the rules of another language
        heading(Texts::tr("Name")) + QStringLiteral("vantry \\- ") +
        escaped(Texts::tr("read, edit, compare and convert configuration files")) + QLatin1Char('\n') +
        heading(Texts::tr("Synopsis")) +
        QStringLiteral("\\fBvantry\\fR [\\fB\\-\\-backend\\fR "
                       "\\fINAME\\fR=\\fIFILE\\fR[:ro|wo|rw]]... \\fICOMMAND\\fR ...\n") +
        heading(Texts::tr("Description")) + escaped(purpose()) + QLatin1Char(' ') +
        escaped(Texts::tr("An edit of one value changes the bytes of that value; everything else in the file "
                          "stays as its author left it.")) +
        QLatin1Char('\n') + heading(Texts::tr("Commands"));
    for (const Command& command : CommandTable::commands()) {
        if (!command.isHidden)
            page += sectionFor(command);
    }
    page += heading(Texts::tr("Options of all commands")) + optionList(CommandTable::commonOptions());
    for (const Topic& topic : topics()) {
        page += heading(Texts::of(topic.title));
        bool isFirst = true;
        for (const std::string_view paragraph : topic.paragraphs) {
            page += (isFirst ? QString() : QStringLiteral(".PP\n")) + escaped(Texts::of(paragraph)) +
                    QLatin1Char('\n');
            isFirst = false;
        }
    }
    return page + heading(Texts::tr("See also")) + QStringLiteral("\\fBvantry\\-desk\\fR(1)\n");
}

} // namespace CommandLine
