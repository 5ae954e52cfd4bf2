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

// What people write with anchors: services, jobs of a pipeline, databases, and what else merges may look
// like.
inline std::vector<QByteArray> linkedFiles()
{
    return {
        "x-base: &base\n  image: 'ubuntu' # base\n  env: &env\n    A: 1\n    B: \"2\"\n  ports: [x, y]\n\n"
        "services:\n  # the first\n  web:\n    <<: *base\n    name: web\n  db:\n    <<: *base\n"
        "    image: postgres # own\n    env:\n      <<: *env\n      C: 3.5\n\nlast: true\n",
        ".script: &script\n- make\n- make check\n.only: &only {refs: [main], n: 0x10}\njob:\n  script: "
        "*script\n"
        "  only: *only\nother:\n  script: *script\n  retry: &n 2\nthird: [*n, 5]\n",
        "default: &default\n  adapter: sqlite3\n  pool: 5\n  timeout:\n\ndevelopment:\n  <<: *default\n"
        "  database: db/dev\n\ntest: &test\n  <<: *default\n  pool: 1\n\nci:\n  <<: *test\n  database: "
        "db/ci\n",
        "a: &a {x: 1, y: ~}\nb: &b {y: b, z: [p, q]}\nboth:\n  own: 1\n  <<: [*b, *a]\nflow: {<<: *a, x: "
        "own}\n"
        "list:\n- <<: *b\n  z: 1\n- {<<: [*a, *b]}\ninline:\n  <<: {k: 1, l: 2}\n  k: 3\nalias: *b\n"};
}

inline std::vector<Entry> entriesOf(const Document& document)
{
    std::vector<Entry> entries;
    document.visit([&](const Entry& entry) { entries.push_back(entry); });
    return entries;
}

} // namespace DocumentEdits
