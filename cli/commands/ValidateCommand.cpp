#include "cli/DocumentFile.h"
#include "cli/Output.h"
#include "cli/Records.h"
#include "cli/Session.h"
#include "cli/Texts.h"
#include "cli/commands/Commands.h"
#include "cli/language/Language.h"
#include "repository/validation/Validation.h"

#include <QRegularExpression>

#include <optional>

namespace CommandLine::Commands {

namespace {

struct PathRule
{
    QString pattern;
    Repository::Validations rules; // one
};

bool isForPrograms(const Invocation& invocation)
{
    return invocation.has("--json") || invocation.has("--null");
}

// Where the name of the rule begins: a path may hold "=" itself.
int nameStart(const QString& text)
{
    const QStringList known =
        Repository::validationNames().replaceInStrings(QRegularExpression(QStringLiteral("\\(.*")), {});
    for (int equals = text.indexOf(QLatin1Char('=')); equals >= 0;
         equals = text.indexOf(QLatin1Char('='), equals + 1)) {
        if (known.contains(text.mid(equals + 1).section(QLatin1Char('('), 0, 0)))
            return equals + 1;
    }
    return text.indexOf(QLatin1Char('=')) + 1;
}

// Empty, with a message on stderr, when one of them is not valid.
std::optional<std::vector<PathRule>> readRules(const QStringList& texts)
{
    std::vector<PathRule> rules;
    for (const QString& text : texts) {
        const int start = nameStart(text);
        if (start < 2) {
            Output::message(Texts::tr("--rule needs PATH=NAME, not '%1'").arg(text));
            return {};
        }
        QString error;
        const auto rule = Repository::makeValidation(text.mid(start), error);
        if (!rule) {
            Output::message(error);
            return {};
        }
        rules.push_back({text.left(start - 1), {rule}});
    }
    return rules;
}

class Validation
{
public:
    Validation(Session& validatedSession, const Source& validated, const Invocation& invocation)
        : session(validatedSession), source(validated)
    {
        if (isForPrograms(invocation))
            records.emplace(invocation);
    }

    // False when there is no attribute that the rule is for.
    bool check(const PathRule& rule)
    {
        auto& repository = session.getRepository();
        const QStringList paths = repository.getTreeInterface()->findPaths({source.fullPath(rule.pattern)});
        bool isUsed = false;
        for (const QString& path : paths) {
            const auto attribute = repository.getReaderInterface()->getAttribute(path);
            if (!attribute || !isReadable(attribute->getAccessMode()))
                continue;
            isUsed = true;
            const QVariant value = attribute->getValue();
            const Repository::Breach breach = Repository::findBreach(rule.rules, value);
            if (!breach)
                continue;
            (breach.verdict == Repository::Validation::Verdict::Undecided ? isUndecided : hasFaults) = true;
            tell(source.relativePath(path), rule.rules.front()->name, value, breach.explain(value));
        }
        return isUsed;
    }

    bool foundFaults() const { return hasFaults; }
    bool isComplete() const { return !isUndecided; }

private:
    void tell(const QString& path, const QString& rule, const QVariant& value, const QString& reason)
    {
        if (!document)
            document = DocumentFile::read(source.absolutePath, source.format);
        const auto [line, column] = document->positionOf(path);
        const QString place = line > 0 ? QStringLiteral(":%1:%2").arg(line).arg(column) : QString();
        const QString text = Texts::tr("%1%2: '%3': %4").arg(source.given, place, path, reason);
        Records::Fields fields{{"path", path}, {"rule", rule}, {"value", value}, {"reason", reason}};
        if (line > 0)
            fields.insert(fields.end(), {{"line", line}, {"column", column}});
        if (!records)
            Output::message(text);
        else if (records->areJson())
            records->add(fields);
        else
            records->add(text);
    }

    Session& session;                     // not owned
    const Source& source;                 // not owned
    std::optional<DocumentFile> document; // read when there is something to report of it
    std::optional<Records> records;       // without them faults are messages
    bool hasFaults = false;
    bool isUndecided = false; // a rule that could not be checked
};

QString exampleNames()
{
    QStringList names;
    const auto descriptions = Repository::validationDescriptions();
    for (const auto& description : descriptions)
        names.append(description.example);
    return names.join(QStringLiteral(", "));
}

ExitCode run(Session& session, const Invocation& invocation)
{
    if (isForPrograms(invocation))
        Language::showEnglish(); // what it reports has reasons in it
    const auto rules = readRules(invocation.valuesOf("--rule"));
    if (!rules)
        return ExitCode::Usage;
    if (rules->empty())
        return Session::fail(ExitCode::Usage, Texts::tr("validate needs a --rule PATH=NAME"));
    const Source* source = session.open(invocation.arguments.at(0), Session::Opening::Read);
    if (!source)
        return session.getFailure();
    Validation validation(session, *source, invocation);
    bool isComplete = true;
    for (const PathRule& rule : *rules) {
        if (validation.check(rule))
            continue;
        isComplete = false;
        Output::message(Texts::tr("%1: attribute '%2' not found").arg(source->given, rule.pattern));
    }
    if (validation.foundFaults())
        return ExitCode::Refused;
    if (!validation.isComplete())
        return ExitCode::Usage;
    return isComplete ? ExitCode::Done : ExitCode::Negative;
}

} // namespace

Command validate()
{
    Command command{
        "validate",
        QT_TRANSLATE_NOOP("CommandLine", "check values against rules"),
        QT_TRANSLATE_NOOP(
            "CommandLine",
            "In PATH, \"*\" stands for any run of characters. NAME is one of %1"
            ", where the arguments are examples. Each value that breaks a rule is reported on stderr with "
            "its "
            "place in the file; the exit code is 3 then, and 1 when a rule has no attribute to check. An "
            "expression that takes too many steps for a value is given up, which is reported, and the exit "
            "code "
            "is 2 when no value breaks a rule.\n"
            "With --null these reports are on stdout. With --json they are an array of objects with "
            "\"path\", "
            "\"rule\", \"value\", \"reason\", \"line\" and \"column\"."),
        {{{"FILE", Word::File}}},
        {{"--rule", "PATH=NAME", Word::Validation,
          QT_TRANSLATE_NOOP("CommandLine", "the values of PATH must keep the rule NAME; may be repeated"),
          true},
         jsonOption,
         nullOption},
        {"vantry validate app.ini --rule 'server.port=range(1,65535)'",
         "vantry validate app.ini --rule '*.host=host-name'"},
        run};
    command.insertion = exampleNames;
    command.takesStores = false;
    return command;
}

} // namespace CommandLine::Commands
