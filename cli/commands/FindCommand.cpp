#include "cli/Condition.h"
#include "cli/Output.h"
#include "cli/Records.h"
#include "cli/Session.h"
#include "cli/TreeWalk.h"
#include "cli/TypedText.h"
#include "cli/commands/Commands.h"
#include "host/FrameworkCore/AppConfig/PathPattern.h"

namespace CommandLine::Commands {

namespace {

using FrameworkCore::AppConfig::PathPattern;

// What is asked of a node beyond its path.
class Question
{
public:
    // Nothing, and a message, for a condition that is none.
    static std::optional<Question> of(const Invocation& invocation)
    {
        Question question;
        if (invocation.has("--value"))
            question.value.emplace(invocation.valueOf("--value"));
        const QStringList texts = invocation.valuesOf("--where");
        for (const QString& text : texts) {
            QString reason;
            const auto condition = Condition::parse(text, reason);
            if (!condition) {
                Output::message(reason);
                return {};
            }
            question.conditions.push_back(*condition);
        }
        return question;
    }

    // Nothing when it takes too many steps to say.
    std::optional<bool> holds(Session& session, const QString& path, const QString& shownPath) const
    {
        if (!value && conditions.empty())
            return true;
        const auto attribute = session.getRepository().getReaderInterface()->getAttribute(path);
        Condition::Node node{shownPath, attribute ? QString() : QStringLiteral("group"), {}};
        if (attribute && isReadable(attribute->getAccessMode())) {
            node.value = attribute->getValue();
            node.type = TypedText::nameOf(*node.value);
        }
        if (value && !(node.value && value->matches(QString::fromStdString(Output::valueText(*node.value)))))
            return false;
        for (const Condition& condition : conditions) {
            const auto holds = condition.holds(node);
            if (!holds.value_or(false))
                return holds;
        }
        return true;
    }

private:
    std::optional<PathPattern> value;
    std::vector<Condition> conditions;
};

ExitCode run(Session& session, const Invocation& invocation)
{
    const auto question = Question::of(invocation);
    if (!question)
        return ExitCode::Usage;
    const Source* source = session.open(invocation.arguments.at(0), Session::Opening::Read);
    if (!source)
        return session.getFailure();
    auto& repository = session.getRepository();
    const QString pattern = invocation.arguments.value(1, QStringLiteral("*"));
    const QStringList paths = findMatches(*repository.getTreeInterface(), *source, pattern);
    Records records(invocation);
    bool isFound = false;
    for (const QString& path : paths) {
        const QString shown = source->relativePath(path);
        const auto holds = question->holds(session, path, shown);
        if (!holds)
            return Session::fail(ExitCode::Usage,
                                 QStringLiteral("%1: '%2': matching its text takes more steps or memory than "
                                                "are allowed; simplify the expression")
                                     .arg(source->given, shown));
        if (*holds)
            records.addNode(repository, *source, path);
        isFound = isFound || *holds;
    }
    return isFound ? ExitCode::Done : ExitCode::Negative;
}

} // namespace

Command find()
{
    return {
        "find",
        "print the paths that match a pattern",
        "In PATTERN and TEXT \"*\" stands for any run of characters, \".\" included; everything else stands "
        "for itself. Without PATTERN all are looked at. Paths are printed in the order of the file. Groups "
        "are found as attributes are, unless "
        "a value is asked for. The exit code is 1 when there is none.\n"
        "CONDITION is value, name, path or type, then = != < <= > >= ~ or !~, then a text, in quotes when "
        "blanks at its ends count. Numbers are compared as numbers, moments as moments, and all else as "
        "text; a number is neither less nor greater than a text. \"~\" asks whether a regular expression "
        "matches a part of it. Types are those that \"get "
        "--type\" prints, and group.\n"
        "With --json: an array of objects with \"path\", \"type\" and, where there is one, \"value\".",
        {{{"FILE", Word::File}, {"PATTERN", Word::Pattern, Argument::Count::Optional}}},
        {{"--value", "TEXT", Word::Text, "only attributes whose value matches TEXT"},
         {"--where", "CONDITION", Word::Text, "only what meets CONDITION; when repeated, all of them", true},
         jsonOption,
         nullOption},
        {"vantry find app.ini '*.port'", "vantry find app.ini '*' --value '*localhost*'",
         "vantry find app.ini --where 'name ~ port$' --where 'value > 1023'"},
        run};
}

} // namespace CommandLine::Commands
