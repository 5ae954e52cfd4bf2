#include "cli/Condition.h"
#include "cli/Output.h"
#include "cli/Records.h"
#include "cli/SearchArguments.h"
#include "cli/Texts.h"
#include "cli/TreeWalk.h"
#include "cli/ValuePlaces.h"
#include "cli/commands/Commands.h"

#include <QFileInfo>

namespace CommandLine::Commands {

namespace {

using FrameworkCore::AppConfig::FilePosition;
using FrameworkCore::AppConfig::Interfaces::SearchHit;
using FrameworkCore::AppConfig::Interfaces::SearchQuery;

// Nothing, and a message, when one of them is none.
std::optional<std::vector<Condition>> readConditions(const Invocation& invocation)
{
    std::vector<Condition> conditions;
    const QStringList texts = invocation.valuesOf("--where");
    for (const QString& text : texts) {
        QString reason;
        const auto condition = Condition::parse(text, reason);
        if (!condition) {
            Output::message(reason);
            return {};
        }
        conditions.push_back(*condition);
    }
    return conditions;
}

// Prints what is found, as it is found.
class Finding
{
public:
    Finding(const Session& openSession, const Invocation& invocation, std::vector<Condition> wanted,
            bool hasManyFiles)
        : session(openSession), conditions(std::move(wanted)), showsLines(invocation.has("--lines")),
          showsFiles(showsLines || hasManyFiles), places(openSession), records(invocation)
    {
    }

    ExitCode run(const Source& source, SearchQuery query)
    {
        query.roots = QStringList(source.root);
        ExitCode code = ExitCode::Done;
        const auto outcome = session.getRepository().getSearchInterface()->find(
            query, [&](const QVector<SearchHit>& hits, int) {
                for (auto hit = hits.begin(); hit != hits.end() && code == ExitCode::Done; ++hit)
                    code = hit->path != source.root ? take(source, *hit) : code;
                return code == ExitCode::Done;
            });
        return code == ExitCode::Done ? session.finish(outcome) : code;
    }

    bool hasFound() const { return isFound; }

private:
    ExitCode take(const Source& source, const SearchHit& hit)
    {
        const bool hasValue = !hit.type.isEmpty() && hit.type != QLatin1String("group");
        const Condition::Node node{source.relativePath(hit.path), hit.type,
                                   hasValue ? std::optional(hit.value) : std::nullopt};
        for (const Condition& condition : conditions) {
            const auto holds = condition.holds(node);
            if (!holds)
                return Session::fail(ExitCode::Usage,
                                     Texts::tr("%1: '%2' was not matched: it takes more steps or "
                                               "memory than are allowed; simplify the expression")
                                         .arg(source.given, node.path));
            if (!*holds)
                return ExitCode::Done;
        }
        isFound = true;
        print(node, placeOf(source, hit.path));
        return ExitCode::Done;
    }

    // Of what is on no line, as a folder, only the file that was given.
    FilePosition placeOf(const Source& source, const QString& path)
    {
        const FilePosition place = showsLines ? places.of(path) : FilePosition();
        return place.line == 0 ? FilePosition{source.recordedFile(source.absolutePath), 0, 0}
                               : FilePosition{source.recordedFile(place.file), place.line, place.column};
    }

    void print(const Condition::Node& node, const FilePosition& place)
    {
        if (!records.areJson()) {
            const QString line = place.line > 0 ? QStringLiteral(":%1").arg(place.line) : QString();
            records.add(showsFiles ? place.file + line + QStringLiteral(": ") + node.path : node.path);
            return;
        }
        Records::Fields fields{{"path", node.path}};
        if (showsFiles)
            fields.insert(fields.begin(), {"file", place.file});
        if (place.line > 0)
            fields.insert(fields.end(),
                          {{"line", qlonglong(place.line)}, {"column", qlonglong(place.column)}});
        if (!node.type.isEmpty())
            fields.emplace_back("type", node.type);
        if (node.value)
            fields.emplace_back("value", *node.value);
        records.add(fields);
    }

    const Session& session; // not owned
    const std::vector<Condition> conditions;
    const bool showsLines;
    const bool showsFiles;
    ValuePlaces places;
    Records records;
    bool isFound = false;
};

ExitCode run(Session& session, const Invocation& invocation)
{
    const auto conditions = readConditions(invocation);
    auto query = SearchArguments::readQuery(session, invocation, invocation.valueOf("--value"));
    if (!conditions || !query)
        return ExitCode::Usage;
    if (!invocation.has("--regex")) {
        query->syntax = SearchQuery::Syntax::Wildcard;
        query->isWhole = invocation.has("--value");
    }
    QStringList files = invocation.arguments;
    const QString pattern = files.size() > 1 ? files.takeLast() : QStringLiteral("*");
    const auto sources = SearchArguments::open(session, files, Session::Opening::Read);
    if (!sources)
        return session.getFailure();
    Finding finding(session, invocation, *conditions, sources->size() > 1);
    for (const Source* const source : *sources) {
        query->pathPattern = source->fullPath(pattern);
        const ExitCode code = finding.run(*source, *query);
        if (code != ExitCode::Done)
            return code;
    }
    if (finding.hasFound())
        return ExitCode::Done;
    if (!isPattern(pattern) && QFileInfo::exists(pattern))
        Output::message(Texts::tr("'%1' is taken as PATTERN; after several files, '*' stands for all of "
                                  "their paths")
                            .arg(pattern));
    return ExitCode::Negative;
}

} // namespace

Command find()
{
    return {
        "find",
        QT_TRANSLATE_NOOP("CommandLine", "print the paths that match a pattern"),
        QT_TRANSLATE_NOOP(
            "CommandLine",
            "In PATTERN and TEXT \"*\" stands for any run of characters, \".\" included; everything else "
            "stands "
            "for itself. Without PATTERN all are looked at. Paths are printed in the order of the file. "
            "Groups "
            "are found as attributes are, unless "
            "a value or type is asked for. The exit code is 1 when there is none.\n"
            "Of several files a line is \"FILE: PATH\", and with --lines \"FILE:LINE: PATH\"; that of a "
            "group is the LINE of its first value.\n"
            "CONDITION is value, name, path or type, then = != < <= > >= ~ or !~, then a text, in quotes "
            "when "
            "blanks at its ends count. Numbers are compared as numbers, moments as moments, and all else as "
            "text; a number is neither less nor greater than a text. \"~\" asks whether a regular expression "
            "matches a part of it. Types are those that \"get "
            "--type\" prints, and group.\n"
            "With --json: an array of objects with \"path\", \"type\" and, where there is one, \"value\"; "
            "also "
            "\"file\" of several files, and \"file\", \"line\" and \"column\" with --lines."),
        {{{"FILE", Word::File}, {"PATTERN", Word::Pattern, Argument::Count::Optional}},
         {{"FILE", Word::File, Argument::Count::OneOrMore}, {"PATTERN", Word::Pattern}}},
        {{"--value", "TEXT", Word::Text,
          QT_TRANSLATE_NOOP(
              "CommandLine",
              "only attributes whose value matches TEXT; of a list, all of it or one of its elements")},
         {"--regex",
          {},
          Word::Text,
          QT_TRANSLATE_NOOP("CommandLine",
                            "TEXT is a regular expression, which matches a part of the value")},
         SearchArguments::ignoreCase,
         SearchArguments::ofType,
         {"--where", "CONDITION", Word::Text,
          QT_TRANSLATE_NOOP("CommandLine", "only what meets CONDITION; when repeated, all of them"), true},
         {"--lines", {}, Word::Text, QT_TRANSLATE_NOOP("CommandLine", "print where it is, too"), false, "-n"},
         jsonOption,
         nullOption},
        {"vantry find app.ini '*.port'", "vantry find app.ini '*' --value '*localhost*'",
         "vantry find -n /etc/app app.ini '*' --value '^10\\.' --regex",
         "vantry find app.ini --where 'name ~ port$' --where 'value > 1023'"},
        run};
}

} // namespace CommandLine::Commands
