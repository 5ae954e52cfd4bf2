#include "fuzz/Exercises.h"
#include "host/FrameworkCore/Values/ValueText.h"
#include "repository/documents/Formats.h"
#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/Document.h"
#include "repository/documents/common/Values.h"

#include <algorithm>

namespace Fuzz {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;
using Repository::Documents::Document;
using Repository::Documents::Entry;
using Repository::Documents::isSame;
using Repository::Documents::joinPath;
using Repository::Documents::Outcome;
using Repository::Documents::Span;

namespace {

constexpr int mostEdits = 12;
constexpr std::size_t mostEntries = 3000; // which are compared with each other

bool isAtOrBelow(const std::string& path, const std::string& above)
{
    return path.compare(0, above.size(), above) == 0 &&
           (path.size() == above.size() || above.empty() || path[above.size()] == '.');
}

bool areSame(const std::vector<Entry>& some, const std::vector<Entry>& others)
{
    return std::equal(
        some.begin(), some.end(), others.begin(), others.end(),
        [](const Entry& a, const Entry& b) { return a.path == b.path && isSame(a.value, b.value); });
}

void sortByPath(std::vector<Entry>& entries)
{
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.path < b.path; });
}

std::vector<Entry> entriesOf(const Document& document)
{
    std::vector<Entry> found;
    document.visit([&found](const Entry& entry) { found.push_back(entry); });
    return found;
}

class DocumentExercise
{
public:
    // The text of the file is all up to the last NUL byte, and the edits are made from the bytes after it;
    // without a NUL the input is both, so that a seed is a plain file.
    DocumentExercise(std::string_view formatName, std::string_view input)
        : format(formatName), text(input), choices(input),
          document(Repository::Documents::makeDocument(formatName))
    {
        const std::size_t end = input.rfind('\0');
        if (end != std::string_view::npos) {
            text = input.substr(0, end);
            choices = input.substr(end + 1);
        }
    }

    std::string run()
    {
        if (!document->parse(std::string(text)).ok())
            return {};
        before = text;
        entries = entriesOf(*document);
        action = "parse";
        if (document->getBytes() != text)
            return fault("the bytes changed without an edit");
        std::string broken = checkTree();
        if (broken.empty())
            broken = checkSpans();
        if (entries.size() > mostEntries)
            return broken;
        for (int edit = 0; edit < mostEdits && broken.empty() && !choices.empty(); ++edit) {
            before = document->getBytes();
            entries = entriesOf(*document);
            broken = checkEdit();
        }
        return broken.empty() ? checkCopy() : broken;
    }

private:
    std::string checkEdit()
    {
        switch (choose(4)) {
        case 0:
            return checkInsertion(takePath(), takeValue());
        case 1:
            return checkRemoval(takePath());
        default:
            const Entry* const entry = takeEntry();
            return entry ? checkSet(*entry, takeValue()) : std::string();
        }
    }

    // Of a text that nothing has edited.
    std::string checkSpans()
    {
        action = "find all values";
        entries = entriesOf(*document);
        std::size_t values = 0;
        bool areThere = true;
        document->visitSpans([&](const std::string& path, Span span) {
            areThere = areThere && span.offset <= text.size() && span.length <= text.size() - span.offset;
            if (++values % 16 == 1) {
                const std::optional<Span> alone = document->locate(path);
                areThere = areThere && alone && alone->offset == span.offset && alone->length == span.length;
            }
        });
        const auto hasValue = [](const Entry& entry) { return entry.value.type != Type::Group; };
        const auto count = std::count_if(entries.begin(), entries.end(), hasValue);
        return areThere && values == std::size_t(count) ? std::string()
                                                        : fault("a walk finds values elsewhere");
    }

    std::string checkSet(const Entry& entry, const Value& value)
    {
        action = "set \"" + entry.path + "\" to \"" + toText(value) + "\", " +
                 std::string(describeType(value.type));
        const std::optional<std::string> spelling = document->spell(entry.path);
        const std::optional<Span> span = document->locate(entry.path);
        const bool isGroup = entry.value.type == Type::Group;
        if (spelling.has_value() == isGroup || span.has_value() == isGroup)
            return fault("a value is not found, or a group has one");
        if (span && (span->offset > before.size() || span->length > before.size() - span->offset))
            return fault("a value lies outside of the text");
        const bool wasNamed = document->namesType(entry.path);
        const bool wasCopy = document->originOf(entry.path) == Document::Origin::Copy;
        const bool isMerged =
            document->originOf(entry.path) == Document::Origin::Reference; // into other entries
        const bool wasLinked = document->isLinked(entry.path);             // and is not taken back alone
        if (!document->set(entry.path, value).ok())
            return checkNothingChanged();
        if (isGroup)
            return fault("a group took a value");
        const std::string after = document->getBytes();
        const std::string_view rest = std::string_view(before).substr(span->offset + span->length);
        // Null is a key without separator where a format has no word for it. A second edit may take back what
        // the first had to put around its value. A tag goes with the type that it names, and comes back with
        // it; one that changed nothing so far may be in the way of another text.
        const std::string_view above = std::string_view(before).substr(0, span ? span->offset : 0);
        const std::size_t tag = above.rfind("@type");
        const bool hasTag =
            tag != std::string_view::npos && std::count(above.begin() + tag, above.end(), '\n') <= 2;
        const bool isOfText = value.type == Type::String || value.type == Type::ByteArray;
        const bool keepsTag = wasNamed == document->namesType(entry.path) && !(hasTag && isOfText) &&
                              (!wasNamed || (value.type == entry.value.type && !toText(value).empty()));
        const bool keepsRest = before == text && !wasCopy && value.type != Type::Null &&
                               entry.value.type != Type::Null && keepsTag;
        if (keepsRest && (after.compare(0, span->offset, before, 0, span->offset) != 0 ||
                          after.size() < span->offset + rest.size() ||
                          std::string_view(after).substr(after.size() - rest.size()) != rest))
            return fault("more than the value's own bytes changed");
        std::vector<Entry> expected = entries;
        for (Entry& each : expected) {
            if (each.path == entry.path || document->sourceOf(each.path) == entry.path)
                each.value = value;
        }
        // An alias in a list changes that, and may make it one of texts, or of other values.
        const bool isLinked = document->isLinked(entry.path);
        std::vector<Entry> now = entriesOf(*document);
        for (std::size_t i = 0; isLinked && i < std::min(now.size(), expected.size()); ++i) {
            if (expected[i].path != entry.path && expected[i].value.type == Type::StringList)
                expected[i].value = now[i].value;
        }
        if (wasCopy) { // it has come to the entries of its map
            sortByPath(now);
            sortByPath(expected);
        }
        if (!areSame(now, expected) && !isMerged && !(isLinked && now.size() != expected.size()))
            return fault("more than one entry changed, or the wrong way");
        std::string broken = checkTree();
        const bool isTakenBack = broken.empty() && keepsTag && !wasCopy && !wasLinked && choose(2) == 0;
        return isTakenBack ? checkUndo(entry, *spelling) : broken;
    }

    std::string checkUndo(const Entry& entry, const std::string& spelling)
    {
        action += ", and back";
        const Outcome outcome = document->respell(entry.path, spelling);
        if (!outcome.ok())
            return fault("a value does not take its old spelling again: " + outcome.error);
        return checkNothingChanged();
    }

    std::string checkInsertion(const std::string& path, const Value& value)
    {
        const std::vector<std::string> shown = shownEntries();
        action =
            "insert \"" + path + "\" as \"" + toText(value) + "\", " + std::string(describeType(value.type));
        if (!document->insert(path, value).ok())
            return checkNothingChanged();
        std::string broken = checkTree();
        if (!broken.empty())
            return broken;
        const std::vector<Entry> now = entriesOf(*document);
        const auto holds = [&now](const std::string& place, const Value& expected) {
            return std::any_of(now.begin(), now.end(), [&](const Entry& entry) {
                return entry.path == place && (expected.type == Type::Group || isSame(entry.value, expected));
            });
        };
        const bool isRootGroup = path.empty() && value.type == Type::Group; // which no document visits
        if (!isRootGroup && !holds(path, value))
            return fault("what was inserted is not there");
        for (const Entry& entry : entries) {
            // Nothing may give way to what comes below it.
            const bool mayGo = entry.value.type == Type::Null && isAtOrBelow(path, entry.path);
            const bool follows = std::binary_search(shown.begin(), shown.end(), entry.path);
            if (entry.path != path && !mayGo && !follows && !holds(entry.path, entry.value))
                return fault("inserting changed \"" + entry.path + "\"");
        }
        return {};
    }

    std::string checkRemoval(const std::string& path)
    {
        action = "remove \"" + path + "\"";
        const bool siblingsMove = document->removalMovesSiblings(path);
        const std::vector<std::string> shown = shownEntries();
        if (!document->remove(path).ok())
            return checkNothingChanged();
        std::string broken = checkTree();
        if (!broken.empty() || siblingsMove)
            return broken;
        if (document->contains(path) &&
            document->originOf(path) == Document::Origin::Own) // not what is merged
            return fault("what was removed is still there");
        const std::vector<Entry> now = entriesOf(*document);
        for (const Entry& entry : entries) {
            const bool losesElement = entry.value.type == Type::StringList && isAtOrBelow(path, entry.path);
            const bool goes = losesElement || entry.value.type == Type::Group ||
                              isAtOrBelow(entry.path, path) ||
                              std::binary_search(shown.begin(), shown.end(), entry.path);
            const bool stays = std::any_of(now.begin(), now.end(), [&entry](const Entry& other) {
                return other.path == entry.path && isSame(other.value, entry.value);
            });
            if (!goes && !stays)
                return fault("removing took \"" + entry.path + "\" as well");
        }
        return {};
    }

    // The paths of what shows other entries, which it follows.
    std::vector<std::string> shownEntries() const
    {
        std::vector<std::string> shown;
        for (const Entry& entry : entries) {
            if (document->sourceOf(entry.path) != entry.path ||
                document->originOf(entry.path) == Document::Origin::Copy)
                shown.push_back(entry.path);
        }
        std::sort(shown.begin(), shown.end());
        return shown;
    }

    std::string checkTree() const
    {
        const auto again = Repository::Documents::makeDocument(format);
        const std::string bytes = document->getBytes();
        const Outcome outcome = again->parse(bytes);
        // When lines go, those that are left may have so many NUL characters that they pass for a binary
        // file.
        if (!outcome.ok() && bytes.find('\0') != std::string::npos)
            return {};
        if (!outcome.ok())
            return fault("the text cannot be read again: " + outcome.error);
        const std::vector<Entry> shown = entriesOf(*document);
        const std::vector<Entry> read = entriesOf(*again);
        for (std::size_t i = 0; i < std::max(shown.size(), read.size()); ++i) {
            if (i >= shown.size() || i >= read.size() || shown[i].path != read[i].path)
                return fault("reading the text again gives other entries");
            if (!isSame(shown[i].value, read[i].value))
                return fault("reading the text again gives \"" + shown[i].path + "\" another value, \"" +
                             toText(read[i].value) + "\" for \"" + toText(shown[i].value) + "\"");
            if (!document->contains(shown[i].path) && !shown[i].path.empty())
                return fault("the entry \"" + shown[i].path + "\" cannot be found");
        }
        return {};
    }

    std::string checkNothingChanged() const
    {
        if (document->getBytes() != before)
            return fault("bytes changed that had to stay");
        if (!areSame(entriesOf(*document), entries))
            return fault("entries changed that had to stay");
        return {};
    }

    // Files of lines have an order of their own, in which groups may be visited several times.
    std::string checkCopy() const
    {
        if (format != "json" && format != "xml")
            return {};
        const std::vector<Entry> shown = entriesOf(*document);
        const auto copy = Repository::Documents::makeDocument(format);
        copy->beginRun();
        for (const Entry& entry : shown) {
            if (!copy->insert(entry.path, entry.value).ok())
                return {};
        }
        std::string lacking;
        if (!copy->endRun(lacking).ok())
            return {};
        const auto again = Repository::Documents::makeDocument(format);
        const Outcome outcome = again->parse(copy->getBytes());
        if (!outcome.ok())
            return fault("a copy cannot be read: " + outcome.error + "\n" + copy->getBytes());
        for (const Document* each : {copy.get(), again.get()}) {
            if (!areSame(entriesOf(*each), shown))
                return fault("a copy holds something else:\n" + copy->getBytes());
        }
        return {};
    }

    std::string fault(const std::string& what) const
    {
        return what + "\nby: " + action + "\n--- before\n" + before + "\n--- after\n" + document->getBytes() +
               "\n---\n";
    }

    unsigned choose(std::size_t count)
    {
        if (choices.empty() || count == 0)
            return 0;
        const auto byte = static_cast<unsigned char>(choices.front());
        choices.remove_prefix(1);
        return unsigned(byte % count);
    }

    std::string takeText()
    {
        const std::string taken(choices.substr(0, choose(24)));
        choices.remove_prefix(std::min(taken.size(), choices.size()));
        return taken;
    }

    Value takeValue()
    {
        switch (choose(14)) {
        case 0:
            return {Type::Null, {}};
        case 1:
            return {Type::Bool, choose(2) == 0};
        case 2:
            return {Type::Integer, std::int64_t(choose(256)) - 128};
        case 3:
            return {Type::Unsigned, UINT64_MAX - choose(256)};
        case 4:
            return {Type::Double, (choose(256) - 100.0) / 8};
        case 5:
            return {Type::StringList, std::vector<std::string>{takeText(), takeText()}};
        case 6:
            return {Type::StringList, std::vector<std::string>()};
        case 7:
            return {Type::ByteArray, takeText()};
        case 8:
            return {Type::Date, std::string("2024-02-29")};
        case 9:
            return {Type::Time, std::string("23:59:59.999")};
        case 10:
            return {Type::DateTime, std::string("2024-02-29T08:30:00+01:00")};
        case 11:
            return {};
        default:
            return {Type::String, takeText()};
        }
    }

    const Entry* takeEntry()
    {
        return entries.empty() ? nullptr : &entries[choose(std::min<std::size_t>(entries.size(), 256))];
    }

    std::string takePath()
    {
        static const char* const names[] = {"k",  "a",   "0",   "1",     "k[2]", "#value",
                                            "@x", "%2E", "%00", "#text", "t"};
        const Entry* const entry = takeEntry();
        const std::string near = entry ? entry->path : std::string();
        switch (choose(4)) {
        case 0:
            return near;
        case 1:
            return joinPath(near, takeText());
        case 2:
            return joinPath(near.substr(0, std::min(near.rfind('.'), near.size())),
                            names[choose(std::size(names))]);
        default:
            return joinPath(near, names[choose(std::size(names))]);
        }
    }

    const std::string_view format;
    std::string_view text;
    std::string_view choices;
    const std::unique_ptr<Document> document;
    std::string before;         // the bytes before the present edit
    std::vector<Entry> entries; // and the entries
    std::string action;         // the present edit, in words
};

} // namespace

Exercise documentExercise(const std::string& format)
{
    return [format](std::string_view input) { return DocumentExercise(format, input).run(); };
}

} // namespace Fuzz
