#pragma once

#include "tests/documents/EntryLines.h"

#include <functional>
#include <string>
#include <vector>

// Edits of documents to be put into tables of tests, and what a document holds.
namespace DocumentEdits {

using namespace EntryLines;
using Repository::Documents::Outcome;
using Repository::Documents::refused;

using Edit = std::function<Outcome(Document&)>;

inline Edit setTo(const std::string& path, const Value& value)
{
    return [=](Document& document) { return document.set(path, value); };
}

inline Edit add(const std::string& path, const Value& value = group())
{
    return [=](Document& document) { return document.insert(path, value); };
}

inline Edit drop(const std::string& path)
{
    return [=](Document& document) { return document.remove(path); };
}

inline Edit renameTo(const std::string& path, const std::string& name)
{
    return [=](Document& document) {
        const auto outcome = document.rename(path, name);
        return outcome ? *outcome : refused("must be moved");
    };
}

inline Edit move(const std::string& path, const std::string& to)
{
    return [=](Document& document) { return *document.moveElement(path, to); };
}

inline Edit copyTo(const std::string& path, const std::string& to)
{
    return [=](Document& document) {
        const auto excerpt = document.excerpt(path);
        return excerpt && document.insertExcerpt(to, *excerpt) ? Outcome() : refused("not as it is written");
    };
}

inline Edit addElement(const std::string& path, const std::vector<Entry>& entries)
{
    return [=](Document& document) { return *document.insertElement(path, entries); };
}

inline Edit addAll(const std::string& path, const std::vector<Entry>& entries)
{
    return [=](Document& document) {
        std::size_t refused = 0;
        return document.insertAll(path, entries, refused);
    };
}

inline std::vector<Entry> entriesOf(const Document& document)
{
    std::vector<Entry> entries;
    document.visit([&](const Entry& entry) { entries.push_back(entry); });
    return entries;
}

} // namespace DocumentEdits
