#include "cli/Output.h"
#include "cli/SearchArguments.h"
#include "cli/Texts.h"
#include "cli/commands/Commands.h"

namespace CommandLine::Commands {

namespace {

using FrameworkCore::AppConfig::Interfaces::SearchHit;
using FrameworkCore::AppConfig::Interfaces::SearchQuery;

// What is to be replaced in one file.
struct Replacements
{
    const Source* source; // not owned
    QVector<SearchHit> hits;
};

// Finds it, and tells of each value that cannot be what it would become.
ExitCode find(const Session& session, SearchQuery query, Replacements& found)
{
    query.roots = QStringList(found.source->root);
    const auto outcome = session.getRepository().getSearchInterface()->find(
        query, [&found](const QVector<SearchHit>& hits, int) {
            found.hits += hits;
            return true;
        });
    ExitCode code = session.finish(outcome);
    for (const SearchHit& hit : qAsConst(found.hits)) {
        if (hit.refusal.ok())
            continue;
        session.tell(hit.refusal);
        code = ExitCode::Refused;
    }
    return code;
}

ExitCode save(Session& session, const Replacements& made)
{
    if (made.hits.isEmpty())
        return made.source->isStandardInput ? session.save(*made.source) : ExitCode::Done;
    const ExitCode code = session.save(*made.source);
    const QString mood = session.isDryRun() ? Texts::tr("would be changed") : Texts::tr("changed");
    if (code == ExitCode::Done)
        Output::message(made.hits.size() == 1
                            ? Texts::tr("%1: 1 value %2").arg(made.source->given, mood)
                            : Texts::tr("%1: %2 values %3")
                                  .arg(made.source->given, QString::number(made.hits.size()), mood));
    return code;
}

ExitCode run(Session& session, const Invocation& invocation)
{
    QStringList files = invocation.arguments;
    const QString replacement = files.takeLast();
    const QString text = files.takeLast();
    if (text.isEmpty())
        return Session::fail(ExitCode::Usage, Texts::tr("TEXT is empty, and would be everywhere"));
    auto query = SearchArguments::readQuery(session, invocation, text);
    if (!query)
        return ExitCode::Usage;
    query->replacement = replacement;
    query->isWhole = invocation.has("--whole");
    const auto sources = SearchArguments::open(session, files, Session::Opening::Edit);
    if (!sources)
        return session.getFailure();
    std::vector<Replacements> found;
    QVector<SearchHit> all;
    ExitCode code = ExitCode::Done;
    for (const Source* const source : *sources) {
        found.push_back({source, {}});
        query->pathPattern =
            source->fullPath(invocation.has("--path") ? invocation.valueOf("--path") : QStringLiteral("*"));
        const ExitCode next = find(session, *query, found.back());
        code = code == ExitCode::Done ? next : code;
        all += found.back().hits;
    }
    if (code == ExitCode::Done)
        code = session.finish(
            session.getRepository().getSearchInterface()->replace(all, QStringLiteral("Replace")));
    for (auto made = found.begin(); made != found.end() && code == ExitCode::Done; ++made)
        code = save(session, *made);
    if (code != ExitCode::Done || !all.isEmpty())
        return code;
    return Session::fail(ExitCode::Negative, Texts::tr("no value has '%1'").arg(text));
}

} // namespace

Command replace()
{
    return {
        "replace",
        QT_TRANSLATE_NOOP("CommandLine", "replace a text in values"),
        QT_TRANSLATE_NOOP(
            "CommandLine",
            "Puts NEW in place of TEXT wherever it is in a value that may be read, in the elements of a list "
            "as "
            "well. Names and comments stay. A value stays of the type that the file says it is of; where the "
            "file "
            "does not say, its type is what it looks like then. When one of the values cannot become what it "
            "would be, no file is written, and the exit code is 3. How many values there are in which file "
            "is "
            "said on stderr; the exit code is 1 when there is none.\n"
            "With --regex, \"\\1\" to \"\\9\" in NEW are what the groups of the expression have matched, "
            "\"\\0\" "
            "is all of it, and \"\\\\\" a backslash."),
        {{{"FILE", Word::File, Argument::Count::OneOrMore}, {"TEXT", Word::Text}, {"NEW", Word::Text}}},
        {{"--path", "PATTERN", Word::Pattern,
          QT_TRANSLATE_NOOP("CommandLine", "only in attributes whose path matches PATTERN, in which \"*\" "
                                           "stands for any run of characters")},
         {"--regex", {}, Word::Text, QT_TRANSLATE_NOOP("CommandLine", "TEXT is a regular expression")},
         {"--whole",
          {},
          Word::Text,
          QT_TRANSLATE_NOOP("CommandLine",
                            "only where TEXT is all of the value, or of the element of a list")},
         SearchArguments::ignoreCase,
         SearchArguments::ofType,
         dryRunOption},
        {"vantry replace a.ini b.json old.example.com new.example.com --dry-run",
         "vantry replace /etc/app '^10\\.0\\.' '10.1.' --regex --path '*.host'"},
        run};
}

} // namespace CommandLine::Commands
