#include "cli/Invocation.h"

#include "cli/CommandTable.h"
#include "cli/Suggestion.h"
#include "cli/Texts.h"
#include "cli/Usage.h"

#include <algorithm>

namespace CommandLine {

namespace {

QStringList namesOf(const std::vector<Option>& options)
{
    QStringList names;
    for (const Option& option : options)
        names.append(toText(option.name));
    return names;
}

// How many arguments it needs; the optional ones come last.
int leastOf(const Command::Form& form)
{
    return int(std::count_if(form.begin(), form.end(), [](const Argument& argument) {
        return argument.count != Argument::Count::Optional;
    }));
}

bool accepts(const Command::Form& form, int count)
{
    const bool isOpen = std::any_of(form.begin(), form.end(), [](const Argument& argument) {
        return argument.count == Argument::Count::OneOrMore;
    });
    return count >= leastOf(form) && (isOpen || count <= int(form.size()));
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
        else if (!optionsEnded && invocation.isOption(word))
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

Invocation::OptionWord Invocation::splitOption(const QString& word)
{
    const int equals = word.startsWith(QLatin1String("--")) ? word.indexOf(QLatin1Char('=')) : -1;
    return equals < 0 ? OptionWord{word, {}} : OptionWord{word.left(equals), word.mid(equals + 1)};
}

bool Invocation::isOption(const QString& word) const
{
    if (word.size() < 2 || !word.startsWith(QLatin1Char('-')))
        return false;
    const bool isNumber = word.at(1).isDigit() || word.at(1) == QLatin1Char('.');
    return !isNumber || CommandTable::findOption(command, word.toStdString());
}

// Gives the place of the last word that belongs to the option.
int Invocation::takeOption(const QStringList& words, int at)
{
    const auto [name, value] = splitOption(words.at(at));
    const Option* option = CommandTable::findOption(command, name.toStdString());
    if (!option) {
        QStringList known = namesOf(CommandTable::commonOptions());
        if (command)
            known += namesOf(command->options);
        const QString suggestion = suggestionFor(name, known);
        error = Texts::tr("unknown option %1%2")
                    .arg(name, suggestion.isEmpty() ? Texts::tr("; what is not an option comes after --")
                                                    : suggestion);
        return at;
    }
    if (option->argument.empty()) {
        if (value)
            error = Texts::tr("%1 takes no value").arg(name);
        options.append({option->name, {}});
        return at;
    }
    if (!value && at + 1 == words.size()) {
        error = Texts::tr("%1 needs its %2").arg(name, toText(option->argument));
        return at;
    }
    if (has(option->name) && !option->isRepeatable)
        error = Texts::tr("%1 is given twice").arg(name);
    options.append({option->name, value ? *value : words.at(at + 1)});
    return value ? at : at + 1;
}

void Invocation::takeName(const QString& name)
{
    command = CommandTable::find(name.toStdString());
    if (command)
        return;
    const QString suggestion = suggestionFor(name, CommandTable::names());
    error = Texts::tr("unknown command '%1'%2")
                .arg(name, suggestion.isEmpty() ? Texts::tr("; 'vantry help' lists them") : suggestion);
}

void Invocation::checkArguments()
{
    std::vector<Command::Form> forms;
    QStringList usages;
    for (const Command::Form& form : command->forms) {
        forms.push_back(expected(form));
        usages.append(Usage::ofForm(*command, forms.back()));
    }
    const auto fits = [this](const Command::Form& form) { return accepts(form, arguments.size()); };
    if (std::none_of(forms.begin(), forms.end(), fits))
        error = Texts::tr("%1: %2; usage: %3")
                    .arg(toText(command->name), describeMissing(forms, arguments),
                         usages.join(Texts::tr(" or ")));
}

// Without what the options supply.
Command::Form Invocation::expected(Command::Form form) const
{
    const auto isSupplied = [this](const Argument& argument) {
        return !argument.suppliedBy.empty() && has(argument.suppliedBy);
    };
    form.erase(std::remove_if(form.begin(), form.end(), isSupplied), form.end());
    return form;
}

// Of the shortest form that the arguments may yet become, what it lacks; or else what is too much.
QString Invocation::describeMissing(const std::vector<Command::Form>& forms, const QStringList& given)
{
    const Command::Form* wanted = nullptr;
    int most = 0;
    for (const Command::Form& form : forms) {
        const int least = leastOf(form);
        if (least > given.size() && (!wanted || least < leastOf(*wanted)))
            wanted = &form;
        if (least <= given.size())
            most = std::max(most, int(form.size()));
    }
    if (!wanted)
        return Texts::tr("'%1' is one word too many").arg(given.at(most));
    QStringList names;
    for (int at = given.size(); at < leastOf(*wanted); ++at)
        names.append(toText(wanted->at(std::size_t(at)).name));
    const QString last = names.takeLast();
    return names.isEmpty() ? Texts::tr("%1 is missing").arg(last)
                           : Texts::tr("%1 and %2 are missing").arg(names.join(QStringLiteral(", ")), last);
}

} // namespace CommandLine
