#include "desk/Options.h"

#include <QCommandLineParser>

namespace Vantry {

namespace {

struct Parser
{
    Parser()
    {
        parser.setApplicationDescription(
            QStringLiteral("Vantry: one window over all configuration of a system."));
        // Qt's own options have one dash and are taken out later; they are not bundles of ours.
        parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
        parser.addPositionalArgument(QStringLiteral("files"),
                                     QStringLiteral("Configuration files and folders to open."),
                                     QStringLiteral("[FILE...]"));
        tried.setFlags(QCommandLineOption::HiddenFromHelp);
        rehearsed.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOptions({pluginFolder, sharedFolder, safe, picture, tried, rehearsed, help, version});
    }

    QCommandLineParser parser;
    QCommandLineOption pluginFolder{QStringLiteral("plugin-dir"),
                                    QStringLiteral("Load plug-ins from DIR instead of the usual places."),
                                    QStringLiteral("DIR")};
    QCommandLineOption sharedFolder{
        QStringLiteral("shared-plugin-dir"),
        QStringLiteral(
            "Load plug-ins from DIR too, even though other users can change the files there and so "
            "have their own code run as yours."),
        QStringLiteral("DIR")};
    QCommandLineOption safe{
        QStringLiteral("safe"),
        QStringLiteral("Start without any plug-in, when one keeps Vantry from starting.")};
    QCommandLineOption picture{QStringLiteral("picture"),
                               QStringLiteral("Draw the window into OUT.png when all is loaded, and end."),
                               QStringLiteral("OUT.png")};
    QCommandLineOption tried{QStringLiteral("try-plugin"), QString(), QStringLiteral("FILE")};
    QCommandLineOption rehearsed{QStringLiteral("rehearse-plugin"), QString(), QStringLiteral("FILE")};
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help.")};
    QCommandLineOption version{{QStringLiteral("v"), QStringLiteral("version")},
                               QStringLiteral("Show the version.")};
};

} // namespace

Options Options::parse(const QStringList& arguments)
{
    Parser command;
    Options options;
    if (!command.parser.parse(arguments))
        options.error = command.parser.errorText();
    else if (command.parser.isSet(command.picture) && command.parser.value(command.picture).isEmpty())
        options.error = QStringLiteral("--picture needs the name of a file");
    options.files = command.parser.positionalArguments();
    options.pluginFolders = command.parser.values(command.pluginFolder);
    options.sharedPluginFolders = command.parser.values(command.sharedFolder);
    options.isSafe = command.parser.isSet(command.safe);
    options.pictureFile = command.parser.value(command.picture);
    options.triedPlugins = command.parser.values(command.tried) + command.parser.values(command.rehearsed);
    options.wantsHelp = command.parser.isSet(command.help);
    options.wantsVersion = command.parser.isSet(command.version);
    return options;
}

QString Options::helpText()
{
    return Parser().parser.helpText();
}

} // namespace Vantry
