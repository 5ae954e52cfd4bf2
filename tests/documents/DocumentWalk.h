#pragma once

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/TextLine.h"
#include "tests/documents/EntryLines.h"

#include <QRandomGenerator>

#include <algorithm>
#include <cctype>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace EntryLines {

// The first seed of a walk and the one after the last: at least so many, from VANTRY_WALK_FIRST_SEED on, and
// more where VANTRY_WALK_SEEDS says so.
inline std::pair<quint32, quint32> walkSeeds(int fewest)
{
    const auto first = quint32(qEnvironmentVariableIntValue("VANTRY_WALK_FIRST_SEED"));
    return {first, first + quint32(std::max(fewest, qEnvironmentVariableIntValue("VANTRY_WALK_SEEDS")))};
}

// A document that goes a random way beside a model of it, which is as simple as can be. After every step both
// hold the same, and so does the text when it is read afresh; what lies around a value that was set keeps its
// bytes, other entries their spelling, and a refused edit leaves the file as it was.
class DocumentWalk
{
public:
    DocumentWalk(const std::string& documentType, quint32 seed)
        : type(documentType), random(seed), document(Repository::Documents::makeDocument(type))
    {
    }
    virtual ~DocumentWalk() = default;

    // One random edit; gives what is wrong after it, or nothing.
    QString step()
    {
        before = document->getBytes();
        hadTags = hadTags || before.find("@type") != std::string::npos;
        isMoving = false;
        const auto others = someSpellings();
        const bool isDone = edit().ok();
        ++(isDone ? edits : refusals);
        if (!isDone && document->getBytes() != before)
            wrong = "a refused edit changed the file";
        for (const auto& [path, spelling] : others) {
            const auto now = spellingOf(path);
            const bool gaveWay = type == "yaml" && !now && isAtOrBelow(touched, path);
            if (!isMoving && !isAtOrBelow(path, touched) && now != spelling && !gaveWay)
                wrong = "another entry is spelled anew";
        }
        if (!wrong)
            judge();
        if (!wrong && random.bounded(4) == 0)
            detour();
        return wrong ? fault() : QString();
    }

    int edits = 0;
    int refusals = 0;

protected:
    using Outcome = Repository::Documents::Outcome;
    using Span = Repository::Documents::Span;

    // Of the document by what follows, and of the model; a refused one leaves the model as it is.
    virtual Outcome edit() = 0;
    virtual bool agrees(const QStringList& lines) const = 0; // the model with those of the document

    Outcome set(const std::string& path, const Value& value)
    {
        touch(path, "set", value);
        const std::optional<Span> place = document->locate(path);
        if (place.has_value() != document->spell(path).has_value())
            wrong = "a value has a spelling and a place, or neither";
        const Type former = typeAt(path);
        const bool wasNamed = document->namesType(path);
        const Outcome outcome = document->set(path, value);
        const bool isTagged = wasNamed || document->namesType(path);
        mayRetag = type != "json" && isTagged && (former != value.type || hadTags);
        if (outcome.ok() && place && !keepsAround(*place, document->getBytes()))
            wrong = "setting a value changed what lies around it";
        return outcome;
    }

    Outcome insert(const std::string& path, const Value& value)
    {
        touch(path, "insert", value);
        return document->insert(path, value);
    }

    Outcome remove(const std::string& path)
    {
        touch(path, "remove", {});
        isMoving = document->removalMovesSiblings(path);
        return document->remove(path);
    }

    static bool isAtOrBelow(const std::string& path, const std::string& above)
    {
        return path.compare(0, above.size(), above) == 0 &&
               (path.size() == above.size() || above.empty() || path[above.size()] == '.');
    }

    template <typename List>
    typename List::value_type pick(const List& list)
    {
        return list[std::size_t(random.bounded(int(list.size())))];
    }

    std::string type;
    QRandomGenerator random;
    std::unique_ptr<Document> document;
    std::string before;          // the bytes before the step
    bool hadTags = false;        // of types, which may come back with former spellings
    const char* wrong = nullptr; // what the step saw
    bool isMoving = false;       // others may have new paths after the step
    bool mayRetag = false;       // the value that was set is not of the type that a tag named

private:
    void touch(const std::string& path, const char* what, const Value& value)
    {
        touched = path;
        action = QStringLiteral("%1 '%2' %3")
                     .arg(QLatin1String(what), QString::fromStdString(path), toLine(value));
    }

    std::vector<std::string> paths() const
    {
        std::vector<std::string> found;
        document->visit([&found](const Entry& entry) { found.push_back(entry.path); });
        return found;
    }

    // Without the end of its last line, which the last one of a file gets when another comes after it.
    std::optional<std::string> spellingOf(const std::string& path) const
    {
        std::optional<std::string> spelling = document->spell(path);
        if (spelling)
            spelling->resize(spelling->find_last_not_of("\r\n") + 1);
        return spelling;
    }

    std::vector<std::pair<std::string, std::optional<std::string>>> someSpellings()
    {
        std::vector<std::pair<std::string, std::optional<std::string>>> some;
        const std::vector<std::string> all = paths();
        for (int i = 0; i < 3 && !all.empty(); ++i) {
            const std::string path = pick(all);
            some.emplace_back(path, spellingOf(path));
        }
        return some;
    }

    Type typeAt(const std::string& path) const
    {
        Type found = Type::Group;
        document->visit([&](const Entry& entry) { found = entry.path == path ? entry.value.type : found; });
        return found;
    }

    static std::size_t lineOf(const std::string& text) { return text.find_last_of("\r\n") + 1; }

    // The bytes before and after a value; what sets it off from its name comes and goes with it, and so does
    // a type tag before it with its type. Comments between the lines of a value may come to stand above it.
    bool keepsAround(Span place, std::string after) const
    {
        const std::string former = before.substr(place.offset, place.length);
        std::size_t line = lineOf(before.substr(0, place.offset));
        for (std::string above; line > 1; line = lineOf(above)) { // above its tags
            above = before.substr(0, line - (before.compare(line - 2, 2, "\r\n") == 0 ? 2 : 1));
            if (above.find("@type", lineOf(above)) == std::string::npos)
                break;
        }
        line = std::max(line, before.compare(0, 3, "\xEF\xBB\xBF") == 0 ? std::size_t(3) : 0);
        for (std::size_t end = 0; former.find_first_of("\r\n") != std::string::npos; after.erase(line, end)) {
            const auto next = Repository::Documents::textLineAt(after, std::min(line, after.size()));
            const std::string content(Repository::Documents::trimBlanks(next.content));
            if (content.find_first_of("#;") != 0 || content.find("@type") != std::string::npos ||
                former.find(content) == std::string::npos)
                break;
            end = next.end - line;
        }
        std::string_view head = std::string_view(before).substr(0, place.offset);
        std::string_view tail = std::string_view(before).substr(place.offset + place.length);
        head = head.substr(0, head.find_last_not_of(" \t=:/>") + 1);
        if (tail.substr(0, 2) == "</")
            tail = tail.substr(tail.find('>') + 1);
        const bool isKept = after.size() >= tail.size() + (mayRetag ? 0 : head.size());
        return isKept && (mayRetag || after.compare(0, head.size(), head) == 0) &&
               after.compare(after.size() - tail.size(), tail.size(), tail) == 0;
    }

    void judge()
    {
        if (!agrees(toLines(*document)))
            wrong = "the tree is not what it should be";
        const auto fresh = Repository::Documents::makeDocument(type);
        const bool isRead = fresh->parse(document->getBytes()).ok();
        if (!wrong && (!isRead || !holdSame(*document, *fresh)))
            wrong = "the file does not give the tree again";
        const std::vector<std::string> all = paths();
        if (!std::all_of(all.begin(), all.end(),
                         [this](const auto& path) { return document->contains(path); }))
            wrong = "an entry cannot be found";
        const bool areInPlace = std::all_of(
            all.begin(), all.end(), [&](const auto& path) { return isSamePlace(path, *document, *fresh); });
        if (!wrong && !areInPlace)
            wrong = "an entry is not where it is when the file is read again";
    }

    static bool holdSame(const Document& a, const Document& b)
    {
        const std::vector<Entry> first = entriesOf(a);
        const std::vector<Entry> second = entriesOf(b);
        return std::equal(first.begin(), first.end(), second.begin(), second.end(),
                          [](const Entry& one, const Entry& other) {
                              return one.path == other.path && isSame(one.value, other.value);
                          });
    }

    static std::vector<Entry> entriesOf(const Document& document)
    {
        std::vector<Entry> entries;
        document.visit([&entries](const Entry& entry) { entries.push_back(entry); });
        return entries;
    }

    static bool isSamePlace(const std::string& path, const Document& a, const Document& b)
    {
        const auto place = a.locate(path);
        const auto other = b.locate(path);
        if (!place || !other)
            return place.has_value() == other.has_value();
        const bool isEmpty = place->length == 0; // which may be before blanks or after them
        return place->length == other->length && (isEmpty || place->offset == other->offset);
    }

    // Renames an entry of another document with the same text, or puts its excerpt beside it and takes that
    // away again: the entry goes by the new name, and all others stay.
    void detour()
    {
        const std::vector<std::string> all = paths();
        const std::string path = all.empty() ? std::string() : pick(all);
        if (path.empty())
            return;
        const std::string text = document->getBytes();
        const auto other = Repository::Documents::makeDocument(type);
        if (!other->parse(text).ok() || other->removalMovesSiblings(path))
            return;
        const auto ends = Repository::Documents::splitLast(path);
        const std::string name = ends.last[0] == '@' ? "@detour" : "detour";
        const std::string target = Repository::Documents::joinPath(ends.parent, name);
        const QStringList lines = toLines(*other);
        if (other->contains(target))
            return;
        const auto isOk = [&](const char* fault, bool ok) {
            if (!ok) {
                wrong = fault;
                action = QString::fromStdString("detour at '" + path + "' gives\n" + other->getBytes());
            }
            return ok;
        };
        const auto holds = [&](QStringList wanted) {
            QStringList found = toLines(*other);
            const bool isSame = toLines(type.c_str(), other->getBytes()) == found;
            found.sort();
            wanted.sort();
            return isSame && found == wanted;
        };
        QStringList renamed;
        QStringList copied = lines;
        other->visit([&](const Entry& entry) {
            const bool isIn = isAtOrBelow(entry.path, path);
            const std::string moved = isIn ? target + entry.path.substr(path.size()) : entry.path;
            renamed += toLine(Entry{moved, entry.value});
            if (isIn)
                copied += renamed.last();
        });
        const auto outcome = random.bounded(2) == 0 ? other->rename(path, name) : std::nullopt;
        if (outcome) {
            isOk("a refused renaming changed the file", outcome->ok() || other->getBytes() == text);
            isOk("renaming does not rename", !outcome->ok() || holds(renamed));
            const auto back = outcome->ok() ? other->rename(target, std::string(ends.last)) : std::nullopt;
            const bool isPlain = text.find('\\') == std::string::npos &&
                                 std::all_of(ends.last.begin(), ends.last.end(),
                                             [](unsigned char c) { return std::isalnum(c) || c == '@'; });
            isOk("renaming back leaves a trace",
                 !isPlain || !back || !back->ok() || other->getBytes() == text);
            return;
        }
        const auto excerpt = other->excerpt(path);
        if (!excerpt || !isOk("reading an excerpt changed the file", other->getBytes() == text))
            return;
        if (!other->insertExcerpt(target, *excerpt)) {
            isOk("a refused excerpt changed the file", other->getBytes() == text);
            return;
        }
        const bool isSame = holds(copied);
        const auto has = [&text](const char* part) { return text.find(part) != std::string::npos; };
        const bool mayGoOn = has("\\") || has("\n ") || has("\r "); // a line may belong to that above
        if (isOk("an excerpt gives other entries", isSame || mayGoOn) && isSame &&
            other->removeExcerpt(target).ok())
            isOk("taking an excerpt away takes others", holds(lines));
    }

    QString fault() const
    {
        const auto shown = [](const std::string& text) {
            return QString::fromStdString(text).replace(QLatin1Char('\r'), QLatin1String("\\r"));
        };
        const QStringList parts{QLatin1String(wrong),
                                action,
                                QStringLiteral("before:"),
                                shown(before),
                                QStringLiteral("after:"),
                                shown(document->getBytes()),
                                QStringLiteral("tree:"),
                                toLines(*document).join(QLatin1Char('\n')),
                                QStringLiteral("read again:"),
                                toLines(type.c_str(), document->getBytes()).join(QLatin1Char('\n'))};
        return parts.join(QLatin1Char('\n'));
    }

    QString action;
    std::string touched;
};

} // namespace EntryLines
