#pragma once

#include "tests/documents/EntryLines.h"

#include <QRandomGenerator>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace EntryLines {

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
        isMoving = false;
        const auto others = someSpellings();
        const bool isDone = edit().ok();
        ++(isDone ? edits : refusals);
        if (!isDone && document->getBytes() != before)
            wrong = "a refused edit changed the file";
        for (const auto& [path, spelling] : others) {
            if (!isMoving && !isAtOrBelow(path, touched) && document->spell(path) != spelling)
                wrong = "another entry is spelled anew";
        }
        if (!wrong)
            judge();
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
        const std::pair<Span, Span> around = neighboursOf(path, place.value_or(Span()));
        const Outcome outcome = document->set(path, value);
        const std::string after = document->getBytes();
        const std::size_t tail = before.size() - around.second.offset;
        if (outcome.ok() &&
            (after.size() < around.first.length + tail ||
             after.compare(0, around.first.length, before, 0, around.first.length) != 0 ||
             after.compare(after.size() - tail, tail, before, around.second.offset, tail) != 0))
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
    const char* wrong = nullptr; // what the step saw
    bool isMoving = false;       // others may have new paths after the step

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

    std::vector<std::pair<std::string, std::optional<std::string>>> someSpellings()
    {
        std::vector<std::pair<std::string, std::optional<std::string>>> some;
        const std::vector<std::string> all = paths();
        for (int i = 0; i < 3 && !all.empty(); ++i) {
            const std::string path = pick(all);
            some.emplace_back(path, document->spell(path));
        }
        return some;
    }

    // Up to where a value before this place goes, and from where one after it does: as far as the next
    // entries say.
    std::pair<Span, Span> neighboursOf(const std::string& path, Span place) const
    {
        const std::vector<std::string> all = paths();
        const auto at = std::find(all.begin(), all.end(), path) - all.begin();
        std::pair<Span, Span> around{{0, 0}, {before.size(), 0}};
        for (auto i = std::max<std::ptrdiff_t>(at - 2, 0); i < std::ptrdiff_t(all.size()) && i <= at + 2;
             ++i) {
            const auto other = i == at ? std::nullopt : document->locate(all[std::size_t(i)]);
            if (other && other->offset + other->length <= place.offset)
                around.first.length = std::max(around.first.length, other->offset + other->length);
            if (other && other->offset >= place.offset + place.length)
                around.second.offset = std::min(around.second.offset, other->offset);
        }
        return around;
    }

    void judge()
    {
        const QStringList lines = toLines(*document);
        if (!agrees(lines))
            wrong = "the tree is not what it should be";
        else if (toLines(type.c_str(), document->getBytes()) != lines)
            wrong = "the file does not give the tree again";
        const std::vector<std::string> all = paths();
        if (!std::all_of(all.begin(), all.end(),
                         [this](const auto& path) { return document->contains(path); }))
            wrong = "an entry cannot be found";
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
