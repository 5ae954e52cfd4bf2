#pragma once

#include "cli/Command.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

namespace CommandLine {

// The arguments of one run, taken apart by the table of commands.
struct Invocation
{
    struct GivenOption
    {
        std::string_view name;
        QString value;
    };

    const Command* command = nullptr; // null when there is none
    QStringList arguments;            // of the command, without its name
    QVector<GivenOption> options;
    QString error; // what is wrong, for a person; empty when it can be run

    bool has(std::string_view option) const { return !valuesOf(option).isEmpty(); }
    QString valueOf(std::string_view option) const; // the last one given; empty without
    QStringList valuesOf(std::string_view option) const;

    // Options may come before, between and after the arguments, as "--name value" or "--name=value"; after
    // "--" there are none. A word that begins like a negative number is not an option, unless the command has
    // one of that name.
    static Invocation parse(const QStringList& words);

    // An option as it is written, and what comes after its "=".
    struct OptionWord
    {
        QString name;
        std::optional<QString> value;
    };
    static OptionWord splitOption(const QString& word);
    bool isOption(const QString& word) const;

private:
    int takeOption(const QStringList& words, int at);
    void takeName(const QString& name);
    void checkArguments();
    Command::Form expected(Command::Form form) const;
    static QString describeMissing(const std::vector<Command::Form>& forms, const QStringList& given);
};

} // namespace CommandLine
