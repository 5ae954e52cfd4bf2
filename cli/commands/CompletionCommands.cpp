#include "cli/CommandTable.h"
#include "cli/Output.h"
#include "cli/Session.h"
#include "cli/Suggestion.h"
#include "cli/Texts.h"
#include "cli/TypedText.h"
#include "cli/Usage.h"
#include "cli/commands/Commands.h"
#include "host/FrameworkCore/AppConfig/AttributePath.h"
#include "host/FrameworkCore/Core/SpokenLanguage.h"
#include "repository/documents/Formats.h"
#include "repository/validation/Validation.h"

#include <QFile>

#include <algorithm>

namespace CommandLine::Commands {

namespace {

QStringList shells()
{
    return {QStringLiteral("bash"), QStringLiteral("zsh"), QStringLiteral("fish")};
}

// What the words of an unfinished command line ask for next.
class Completion
{
public:
    explicit Completion(const QStringList& words) : current(words.last())
    {
        for (const QString& word : words.mid(0, words.size() - 1))
            take(word);
        const Option* option = optionsEnded || awaiting ? nullptr : takeBeginning();
        if (awaiting || option)
            add((awaiting ? awaiting : option)->word);
        else if (!optionsEnded && current.startsWith(QLatin1Char('-')))
            addOptions();
        else if (!line.command)
            add(Word::Command);
        else
            addArguments();
    }

    void print() const
    {
        const QString beforeFile = beginning + beforeName;
        Output::line(!wantsFiles            ? QStringLiteral("words")
                     : beforeFile.isEmpty() ? QStringLiteral("files")
                                            : QStringLiteral("files ") + beforeFile);
        for (const QString& candidate : candidates) {
            if (candidate.startsWith(current))
                Output::line(beginning + candidate);
        }
    }

private:
    void take(const QString& word)
    {
        if (awaiting) {
            line.options.append({awaiting->name, word});
            awaiting = nullptr;
        } else if (!optionsEnded && word == QLatin1String("--")) {
            optionsEnded = true;
        } else if (!optionsEnded && line.isOption(word)) {
            const auto [name, value] = Invocation::splitOption(word);
            const Option* option = CommandTable::findOption(line.command, name.toStdString());
            if (option && !value && !option->argument.empty())
                awaiting = option;
            else if (option)
                line.options.append({option->name, value.value_or(QString())});
        } else if (!line.command) {
            line.command = CommandTable::find(word.toStdString());
        } else {
            line.arguments.append(word);
        }
    }

    // The option whose value is unfinished, as in "--format=js"; what is before the value is set apart.
    const Option* takeBeginning()
    {
        const auto [name, value] = Invocation::splitOption(current);
        const Option* option = value ? CommandTable::findOption(line.command, name.toStdString()) : nullptr;
        if (option) {
            beginning = name + QLatin1Char('=');
            current = *value;
        }
        return option;
    }

    void addOptions()
    {
        std::vector<Option> options = CommandTable::commonOptions();
        if (line.command)
            options.insert(options.begin(), line.command->options.begin(), line.command->options.end());
        for (const Option& option : options) {
            if (option.isRepeatable || !line.has(option.name))
                candidates.append(toText(option.name));
        }
    }

    void addArguments()
    {
        const auto at = std::size_t(line.arguments.size());
        for (const Command::Form& form : line.command->forms) {
            const std::size_t repeated = repeatedOf(form);
            for (std::size_t i = std::min(at, repeated); i < form.size() && i <= at; ++i)
                add(form[i].word);
        }
        candidates.removeDuplicates();
    }

    // The argument that may come again, or the number of them.
    static std::size_t repeatedOf(const Command::Form& form)
    {
        const auto found = std::find_if(form.begin(), form.end(), [](const Argument& argument) {
            return argument.count == Argument::Count::OneOrMore;
        });
        return std::size_t(found - form.begin());
    }

    void add(Word word)
    {
        switch (word) {
        case Word::Command:
            candidates += CommandTable::names();
            break;
        case Word::File:
            addBackends();
            wantsFiles = true;
            break;
        case Word::Format:
            for (const auto* types :
                 {&Repository::Documents::getDocumentTypes(), &Repository::Documents::getDialectTypes()}) {
                for (const std::string& format : *types)
                    candidates += QString::fromStdString(format);
            }
            break;
        case Word::Path:
        case Word::Pattern:
            addPaths();
            break;
        case Word::Validation:
            addRules();
            break;
        case Word::Shell:
            candidates += shells();
            break;
        case Word::Type:
            candidates += TypedText::typeNames();
            break;
        case Word::Language:
            candidates += FrameworkCore::Core::SpokenLanguage::names();
            break;
        case Word::Backend:
            addDeclarations();
            break;
        case Word::Text:
            break;
        }
    }

    void addBackends()
    {
        const QStringList declarations = line.valuesOf("--backend");
        for (const QString& declaration : declarations)
            candidates.append(declaration.section(QLatin1Char('='), 0, 0));
    }

    // NAME=FILE:ACCESS
    void addDeclarations()
    {
        const int equals = current.indexOf(QLatin1Char('='));
        wantsFiles = equals >= 0;
        beforeName = current.left(equals + 1);
        const QString file = current.left(current.lastIndexOf(QLatin1Char(':')) + 1);
        if (file.size() <= beforeName.size())
            return;
        for (const char* access : {"ro", "wo", "rw"})
            candidates.append(file + QLatin1String(access));
    }

    // The file that was named last.
    QString lastFile() const
    {
        QString file;
        for (const Command::Form& form : line.command->forms) {
            const std::size_t repeated = repeatedOf(form);
            for (std::size_t at = 0; at < std::size_t(line.arguments.size()); ++at) {
                const std::size_t meant = std::min(at, repeated);
                if (meant < form.size() && form[meant].word == Word::File)
                    file = line.arguments.at(int(at));
            }
        }
        return file;
    }

    // Level by level, as files are: a group has a "." at its end.
    void addPaths()
    {
        Session session(line);
        const Source* source = line.command ? session.open(lastFile(), Session::Opening::Read) : nullptr;
        if (!source)
            return;
        const auto tree = session.getRepository().getTreeInterface();
        const QString parent = current.left(current.lastIndexOf(QLatin1Char('.')) + 1);
        const QString fullParent = source->fullPath(parent);
        const auto children = tree->getChildren(fullParent);
        for (const auto& child : children) {
            if (child.childCount > 0)
                candidates.append(parent + child.name + QLatin1Char('.'));
            if (child.childCount == 0 || session.getRepository().getReaderInterface()->getAttribute(
                                             FrameworkCore::AppConfig::joinedPath(fullParent, child.name)))
                candidates.append(parent + child.name);
        }
    }

    void addRules()
    {
        const int equals = current.indexOf(QLatin1Char('='));
        if (equals < 0)
            return addPaths();
        const QStringList names = Repository::validationNames();
        for (const QString& name : names)
            candidates.append(current.left(equals + 1) + name.section(QLatin1Char('('), 0, 0));
    }

    QString beginning;  // of the unfinished word, which all candidates have
    QString current;    // its rest
    QString beforeName; // in the rest, where a file's name does not begin it
    Invocation line;
    const Option* awaiting = nullptr; // its value comes next
    bool optionsEnded = false;
    bool wantsFiles = false;
    QStringList candidates;
};

ExitCode run(Session&, const Invocation& invocation)
{
    Completion(invocation.arguments).print();
    return ExitCode::Done;
}

ExitCode printScript(Session&, const Invocation& invocation)
{
    const QString& shell = invocation.arguments.first();
    QFile script(QStringLiteral(":/completion/vantry.") + shell);
    if (!script.open(QIODevice::ReadOnly)) {
        return Session::fail(
            ExitCode::Usage,
            Texts::tr("cannot complete for the shell '%1'%2").arg(shell, suggestionFor(shell, shells())));
    }
    Output::bytes(script.readAll().toStdString());
    return ExitCode::Done;
}

} // namespace

Command completion()
{
    return {
        "completion",
        QT_TRANSLATE_NOOP("CommandLine", "print a script for completion in a shell"),
        QT_TRANSLATE_NOOP(
            "CommandLine",
            "Commands, options, files and the paths in a file are completed then. For bash, add this line to "
            "~/.bashrc: eval \"$(vantry completion bash)\""),
        {{{"bash|zsh|fish", Word::Shell}}},
        {},
        {"eval \"$(vantry completion bash)\""},
        printScript};
}

Command complete()
{
    Command command{
        "complete",
        QT_TRANSLATE_NOOP("CommandLine", "print what may come next"),
        QT_TRANSLATE_NOOP(
            "CommandLine",
            "The last WORD is the unfinished one. The first line is \"files\" when names of files "
            "may come, too, and what precedes the name in WORD, otherwise \"words\"."),
        {{{"WORD", Word::Text, Argument::Count::OneOrMore}}},
        {},
        {},
        run};
    command.isHidden = true;
    return command;
}

} // namespace CommandLine::Commands
