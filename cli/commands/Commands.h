#pragma once

#include "cli/Command.h"

namespace CommandLine::Commands {

// One function for each command; the table lists them.
Command append();
Command completion();
Command complete(); // what the scripts of completion call
Command convert();
Command copy();
Command create();
Command diff();
Command exportTree();
Command find();
Command get();
Command help();
Command importTree();
Command insert();
Command list();
Command locate();
Command ls();
Command move();
Command remove();
Command replace();
Command roundtrip();
Command set();
Command tree();
Command validate();
Command watch();

// Options that several of them take.
constexpr Option dryRunOption{
    "--dry-run",
    {},
    Word::Text,
    QT_TRANSLATE_NOOP("CommandLine", "print what would change in the file as a diff, and write nothing")};
constexpr Argument valueArgument{"VALUE", Word::Text, Argument::Count::One, "--stdin"};
constexpr Option stdinOption{
    "--stdin",
    {},
    Word::Text,
    QT_TRANSLATE_NOOP("CommandLine",
                      "VALUE is not given, but is what standard input holds, less a last line break")};
constexpr Option toFormatOption{
    "--to-format", "FORMAT", Word::Format,
    QT_TRANSLATE_NOOP("CommandLine", "the format of the second FILE, when its name does not decide it")};
constexpr Option jsonOption{
    "--json",
    {},
    Word::Text,
    QT_TRANSLATE_NOOP("CommandLine", "print json, in the form that is described above")};
constexpr Option nullOption{
    "--null",
    {},
    Word::Text,
    QT_TRANSLATE_NOOP("CommandLine", "end each result with NUL, not a line break, and escape nothing"),
    false,
    "-0"};
constexpr Option forceOption{
    "--force", {}, Word::Text, QT_TRANSLATE_NOOP("CommandLine", "replace a file that is there already")};

} // namespace CommandLine::Commands
