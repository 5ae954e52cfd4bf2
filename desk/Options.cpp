#include "desk/Options.h"

#include "host/FrameworkCore/Core/SpokenLanguage.h"

#include <QCommandLineParser>

namespace Vantry {

using FrameworkCore::Core::SpokenLanguage;

namespace {

struct Parser
{
    Parser()
    {
        parser.setApplicationDescription(
            Options::tr("Vantry: one window over all configuration of a system."));
        // Qt's own options have one dash and are taken out later; they are not bundles of ours.
        parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
        parser.addPositionalArgument(QStringLiteral("files"),
                                     Options::tr("Configuration files and folders to open."),
                                     QStringLiteral("[FILE...]"));
        for (QCommandLineOption* hidden : {&tried, &rehearsed, &manual})
            hidden->setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOptions(shown());
        parser.addOptions({tried, rehearsed, manual});
    }

    QList<QCommandLineOption> shown() const
    {
        return {pluginFolder, sharedFolder, safe, picture, language, help, version};
    }

    QCommandLineParser parser;
    QCommandLineOption pluginFolder{QStringLiteral("plugin-dir"),
                                    Options::tr("Load plug-ins from DIR instead of the usual places."),
                                    QStringLiteral("DIR")};
    QCommandLineOption sharedFolder{
        QStringLiteral("shared-plugin-dir"),
        Options::tr("Load plug-ins from DIR too, even though other users can change the files there and so "
                    "have their own code run as yours."),
        QStringLiteral("DIR")};
    QCommandLineOption safe{QStringLiteral("safe"),
                            Options::tr("Start without any plug-in, when one keeps Vantry from starting.")};
    QCommandLineOption picture{QStringLiteral("picture"),
                               Options::tr("Draw the window into OUT.png when all is loaded, and end."),
                               QStringLiteral("OUT.png")};
    QCommandLineOption tried{QStringLiteral("try-plugin"), QString(), QStringLiteral("FILE")};
    QCommandLineOption rehearsed{QStringLiteral("rehearse-plugin"), QString(), QStringLiteral("FILE")};
    QCommandLineOption language{QStringLiteral("language"),
                                Options::tr("Show this start in English (en) or German (de)."),
                                QStringLiteral("LANGUAGE")};
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")}, Options::tr("Show this help.")};
    QCommandLineOption version{{QStringLiteral("V"), QStringLiteral("version")},
                               Options::tr("Show the version.")};
    QCommandLineOption manual{QStringLiteral("man")};
};

// Text as it is: roff reads "\\" and, in front of a line, "." and "'" as its own.
QString escaped(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\e"));
    text.replace(QLatin1Char('-'), QLatin1String("\\-"));
    return text.startsWith(QLatin1Char('.')) ? QStringLiteral("\\&") + text : text;
}

QString heading(const QString& title)
{
    return QStringLiteral(".SH \"%1\"\n").arg(title.toUpper());
}

QString exitStatus(int code, const QString& meaning)
{
    return QStringLiteral(".TP\n%1\n%2\n").arg(QString::number(code), escaped(meaning));
}

QString manualEntry(const QCommandLineOption& option)
{
    QStringList names;
    for (const QString& name : option.names())
        names +=
            QStringLiteral("\\fB%1%2\\fR")
                .arg(escaped(name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--")), escaped(name));
    QString entry = QStringLiteral(".TP\n") + names.join(QStringLiteral(", "));
    if (!option.valueName().isEmpty())
        entry += QStringLiteral(" \\fI%1\\fR").arg(escaped(option.valueName()));
    return entry + QLatin1Char('\n') + escaped(option.description()) + QLatin1Char('\n');
}

} // namespace

Options Options::parse(const QStringList& arguments)
{
    Parser command;
    Options options;
    if (!command.parser.parse(arguments))
        options.error = command.parser.errorText();
    else if (command.parser.isSet(command.picture) && command.parser.value(command.picture).isEmpty())
        options.error = Options::tr("--picture needs the name of a file");
    options.language = command.parser.value(command.language);
    if (options.error.isEmpty() && command.parser.isSet(command.language) &&
        !SpokenLanguage::names().contains(options.language))
        options.error = tr("unknown language '%1'; valid languages: %2")
                            .arg(options.language, SpokenLanguage::names().join(QStringLiteral(", ")));
    options.files = command.parser.positionalArguments();
    options.pluginFolders = command.parser.values(command.pluginFolder);
    options.sharedPluginFolders = command.parser.values(command.sharedFolder);
    options.isSafe = command.parser.isSet(command.safe);
    options.pictureFile = command.parser.value(command.picture);
    options.triedPlugins = command.parser.values(command.tried) + command.parser.values(command.rehearsed);
    options.wantsHelp = command.parser.isSet(command.help);
    options.wantsVersion = command.parser.isSet(command.version);
    options.wantsManual = command.parser.isSet(command.manual);
    return options;
}

QString Options::helpText()
{
    return Parser().parser.helpText();
}

QString Options::manPage()
{
    QString page =
        QStringLiteral(".TH VANTRY\\-DESK 1 \"\" \"Vantry " VANTRY_VERSION "\" \"%1\"\n")
            .arg(tr("User Commands")) +
        QStringLiteral(".nh\n.ad l\n") + // a word is not split, least of all by the rules of another language
        heading(tr("Name")) + QStringLiteral("vantry\\-desk \\- ") +
        escaped(tr("one window over all configuration of a system")) + QLatin1Char('\n') +
        heading(tr("Synopsis")) +
        QStringLiteral("\\fBvantry\\-desk\\fR [\\fIOPTION\\fR]... [\\fIFILE\\fR]...\n") +
        heading(tr("Description")) +
        escaped(tr("Opens configuration files, and folders of them, as one tree of typed attributes, to be "
                   "browsed, searched, watched and edited. An edit of one value changes the bytes of that "
                   "value; everything else in the file stays as its author left it. Without FILE the window "
                   "shows what it showed last, or ways to open files.")) +
        QLatin1Char('\n') + heading(tr("Options"));
    const QList<QCommandLineOption> options = Parser().shown();
    for (const QCommandLineOption& option : options)
        page += manualEntry(option);
    return page + QStringLiteral(".PP\n") +
           escaped(tr("The options of all programs of Qt, as -platform, are understood, too.")) +
           QLatin1Char('\n') + heading(tr("Exit status")) +
           exitStatus(0, tr("The window was closed, or its picture drawn.")) +
           exitStatus(1, tr("No display was found, or a picture cannot be written or lacks a file that could "
                            "not be opened.")) +
           exitStatus(2, tr("The command line is wrong.")) + heading(tr("See also")) +
           QStringLiteral("\\fBvantry\\fR(1)\n");
}

} // namespace Vantry
