#include "cli/Invocation.h"

#include "cli/CommandTable.h"
#include "cli/Suggestion.h"
#include "cli/Usage.h"

#include <algorithm>

namespace CommandLine {

namespace {

bool isOption(const QString& word)
{
    return word.size() > 1 && word.startsWith(QLatin1Char('-')) && !word.at(1).isDigit() &&
           word.at(1) != QLatin1Char('.');
}

QStringList namesOf(const std::vector<Option>& options)
{
    QStringList names;
    for (const Option& option : options)
        names.append(toText(option.name));
    return names;
}

bool accepts(const Command::Form& form, int count)
{
    int least = 0;
    bool isOpen = false;
    for (const Argument& argument : form) {
        least += argument.count == Argument::Count::Optional ? 0 : 1;
        isOpen = isOpen || argument.count == Argument::Count::OneOrMore;
    }
    return count >= least && (isOpen || count <= int(form.size()));
}

} // namespace

QStringList Invocation::valuesOf(std::string_view option) const
{
    QStringList values;
    for (const GivenOption& given : options) {
        if (given.name == option)
            values.append(given.value);
    }
    return values;
}

QString Invocation::valueOf(std::string_view option) const
{
    const QStringList values = valuesOf(option);
    return values.isEmpty() ? QString() : values.last();
}

Invocation Invocation::parse(const QStringList& words)
{
    Invocation invocation;
    bool optionsEnded = false;
    for (int at = 0; at < words.size() && invocation.error.isEmpty(); ++at) {
        const QString& word = words.at(at);
        if (!optionsEnded && word == QLatin1String("--"))
            optionsEnded = true;
        else if (!optionsEnded && isOption(word))
            at = invocation.takeOption(words, at);
        else if (!invocation.command)
            invocation.takeName(word);
        else
            invocation.arguments.append(word);
    }
    if (invocation.error.isEmpty() && invocation.command && !invocation.has("--help"))
        invocation.checkArguments();
    return invocation;
}

// Gives the place of the last word that belongs to the option.
int Invocation::takeOption(const QStringList& words, int at)
{
    const QString& word = words.at(at);
    const int equals = word.startsWith(QLatin1String("--")) ? word.indexOf(QLatin1Char('=')) : -1;
    const QString name = word.left(equals);
    const Option* option = CommandTable::findOption(command, name.toStdString());
    if (!option) {
        QStringList known = namesOf(CommandTable::commonOptions());
        if (command)
            known += namesOf(command->options);
        error = QStringLiteral("unknown option %1%2").arg(name, suggestionFor(name, known));
        return at;
    }
    if (option->argument.empty()) {
        if (equals >= 0)
            error = QStringLiteral("%1 takes no value").arg(name);
        options.append({option->name, {}});
        return at;
    }
    if (equals < 0 && at + 1 == words.size()) {
        error = QStringLiteral("%1 needs its %2").arg(name, toText(option->argument));
        return at;
    }
    if (has(option->name) && !option->isRepeatable)
        error = QStringLiteral("%1 is given twice").arg(name);
    options.append({option->name, equals < 0 ? words.at(at + 1) : word.mid(equals + 1)});
    return equals < 0 ? at + 1 : at;
}

void Invocation::takeName(const QString& name)
{
    command = CommandTable::find(name.toStdString());
    if (command)
        return;
    const QString suggestion = suggestionFor(name, CommandTable::names());
    error = QStringLiteral("unknown command '%1'%2")
                .arg(name, suggestion.isEmpty() ? QStringLiteral("; 'vantry help' lists them") : suggestion);
}

void Invocation::checkArguments()
{
    const auto fits = [this](const Command::Form& form) { return accepts(form, arguments.size()); };
    if (std::none_of(command->forms.begin(), command->forms.end(), fits)) {
        QStringList usages;
        for (const Command::Form& form : command->forms)
            usages.append(Usage::ofForm(*command, form));
        error = QStringLiteral("usage: %1").arg(usages.join(QStringLiteral(" or ")));
    }
}

} // namespace CommandLine
