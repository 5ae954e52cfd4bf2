#pragma once

#include "cli/Texts.h"

#include <QString>

#include <string_view>
#include <vector>

namespace CommandLine {

// What a command ends with; scripts rely on the numbers.
enum class ExitCode : int {
    Done = 0,
    Negative = 1, // not found, or there is a difference
    Usage = 2,
    Refused = 3, // type, validation, access or conflict
    BadFile = 4  // it cannot be read, parsed or written
};

class Session;
struct Invocation;

// What a word of the command line means, which decides how it is completed.
enum class Word { Backend, Command, File, Format, Language, Path, Pattern, Validation, Shell, Text, Type };

struct Argument
{
    std::string_view name; // as help shows it
    Word word = Word::Text;
    enum class Count { One, Optional, OneOrMore } count = Count::One;
    std::string_view suppliedBy = {}; // the option with which it is not given
};

struct Option
{
    std::string_view name;     // with its dashes
    std::string_view argument; // as help shows it; empty for a switch
    Word word = Word::Text;
    std::string_view text; // what it does
    bool isRepeatable = false;
    std::string_view shortName = {}; // as "-h"
};

// One command of the program: what help, man page, completion and the parser of arguments know of it, and
// what runs it. Texts are UTF-8 with static life; Texts::of translates them.
struct Command
{
    using Form = std::vector<Argument>;

    std::string_view name;
    std::string_view summary;     // a line without full stop
    std::string_view description; // paragraphs, each a line
    std::vector<Form> forms;      // the ways to give its arguments, which differ in their number
    std::vector<Option> options;  // of its own
    std::vector<std::string_view> examples;
    ExitCode (*run)(Session& session, const Invocation& invocation) = nullptr;
    bool isHidden = false;     // for scripts of our own
    bool watchesFiles = false; // what other programs change in them meanwhile is brought in as it happens
    bool takesFolders = false; // a FILE may be a folder: all files below it whose format is recognised
    QString (*insertion)() = nullptr; // what "%1" in the description stands for
    bool takesStores = true;          // it may be a store: what the command does needs no text of a file
};

} // namespace CommandLine
