#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace Fuzz {

// Each takes the fuzzer's bytes through one part of Vantry and returns what is broken, for the developer
// who mends it; empty when nothing is. The format of the bytes is described beside each.

using Exercise = std::function<std::string(std::string_view input)>;

// A file of the format, and edits of it. What every document promises is checked: bytes that were not edited
// stay, the tree is what reading the text again would give, a refused edit changes nothing, an edit can be
// taken back, and an empty document takes all of its entries as they are, or refuses one.
Exercise documentExercise(const std::string& format);

// What became of a text that was read without the parser and with it.
struct XmlScannerCheck
{
    bool isPlain = false; // the scanner has read it to its end
    std::string fault;    // what the parser says otherwise then; empty when they agree
};

XmlScannerCheck checkXmlScanner(const std::string& text);

// A file of xml. What the scanner reads, the parser reads with the same tags.
std::string exerciseXmlScanner(std::string_view input);

// Lines of UTF-8: patterns, an empty line, paths. Every way of matching them (one pattern, the index of
// patterns, a search of the tree, notifications) must agree with a matcher that is obviously right.
std::string exercisePatterns(std::string_view input);

// The first line is the text of a validation rule, each other line a value. A rule is either made or refused
// with a reason, and its verdicts must agree with references written in another way.
std::string exerciseRules(std::string_view input);

// Three digits choose a format, a target (memory, or a new or present file of each format) and the path to
// import to; the text to import follows. An import takes all, with one step of undo, and what it took can be
// saved, read, exported and imported again; or it takes nothing and says why.
std::string exerciseImports(std::string_view input);

// Each line is a word of a command line. In a folder with a few files, the program ends with a documented
// exit code, says why when it refuses, and a refusal changes no file. Each word is read as a value of every
// type, too.
std::string exerciseArguments(std::string_view input);

// The bytes of a monitor list. It is loaded as the monitor loads it, or refused with a reason, and a list
// that was loaded is saved and loaded the same.
std::string exerciseMonitorLists(std::string_view input);

// A journal beside a file, as a crash or a hostile user may leave it: after an "r" its bytes; otherwise a
// digit (0 for the file's own inode), a line with a name, and its content. Reading the file recovers the
// content of a whole journal of its own, and nothing else.
std::string exerciseJournals(std::string_view input);

} // namespace Fuzz
