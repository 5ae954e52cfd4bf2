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
        const Outcome outcome = document->set(path, value);
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

    // The bytes before and after a value; what sets it off from its name comes and goes with it.
    bool keepsAround(Span place, const std::string& after) const
    {
        std::string_view head = std::string_view(before).substr(0, place.offset);
        std::string_view tail = std::string_view(before).substr(place.offset + place.length);
        head = head.substr(0, head.find_last_not_of(" \t=:/>") + 1);
        if (tail.substr(0, 2) == "</")
            tail = tail.substr(tail.find('>') + 1);
        const bool isKept = after.size() >= head.size() + tail.size();
        return isKept && after.compare(0, head.size(), head) == 0 &&
               after.compare(after.size() - tail.size(), tail.size(), tail) == 0;
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
