#pragma once

#include "repository/documents/common/ComponentCodec.h"
#include "tests/documents/DocumentWalk.h"

#include <iterator>
#include <map>

namespace EntryLines {

// A walk whose model is the value of every path. What an entry is called whose siblings move is left to the
// document.
class PathWalk : public DocumentWalk
{
public:
    PathWalk(const std::string& documentType, quint32 seed, const std::vector<std::string>& insertedNames)
        : DocumentWalk(documentType, seed), names(insertedNames)
    {
    }

protected:
    void start(const std::string& bytes)
    {
        document->parse(bytes);
        model = modelOf(*document);
    }

    Outcome edit() override
    {
        const Model old = model;
        const int kind = random.bounded(6);
        const Outcome outcome = kind == 0   ? removeAny()
                                : kind < 3  ? setAny()
                                : kind == 3 ? thereAndBack()
                                            : insertAny();
        if (!outcome.ok())
            model = old;
        return outcome;
    }

    bool agrees(const QStringList& /*lines*/) const override { return modelOf(*document) == model; }

private:
    using Model = std::map<std::string, Value>;

    static Model modelOf(const Document& document)
    {
        Model model;
        document.visit([&model](const Entry& entry) { model.emplace(entry.path, entry.value); });
        return model;
    }

    Value anyValue()
    {
        static const std::vector<Value> values{boolean(true),
                                               integer(-3),
                                               text("v"),
                                               text(""),
                                               text("5"),
                                               text(" x "),
                                               text("a\nb"),
                                               text("\na"),
                                               text("C:\\d\\"),
                                               text("x \\"),
                                               text("v ; c"),
                                               text("[a]"),
                                               text("a=b"),
                                               text("<a&amp;]]>"),
                                               text("\"q\""),
                                               text("it's"),
                                               text("'"),
                                               text("\xC3\xBC"),
                                               null(),
                                               number(1.5),
                                               list({"a"}),
                                               {Type::ByteArray, std::string("\xFF")},
                                               {Type::ByteArray, std::string("a")},
                                               {Type::Date, std::string("2024-01-02")},
                                               {Type::Time, std::string("07:30:00.123456")},
                                               {Type::Unsigned, std::uint64_t(18446744073709551615U)}};
        return pick(values);
    }

    std::string anyPath()
    {
        if (model.empty() || random.bounded(8) == 0)
            return pick(std::vector<std::string>{"k", "nowhere", "a.b.k", ""});
        return std::next(model.begin(), random.bounded(int(model.size())))->first;
    }

    Outcome setAny()
    {
        const std::string path = anyPath();
        const Value value = anyValue();
        model[path] = value;
        return set(path, value);
    }

    // What was set, and what its old spelling brought back.
    Outcome thereAndBack()
    {
        const std::string path = anyPath();
        const std::optional<std::string> spelling = document->spell(path);
        const Outcome outcome = set(path, anyValue());
        if (outcome.ok() && mayRetag) { // a spelling is without the tag
            isMoving = true;
            return document->parse(before);
        }
        if (outcome.ok() &&
            (!spelling || !document->respell(path, *spelling).ok() || document->getBytes() != before))
            wrong = "the spelling does not bring the bytes back";
        return outcome;
    }

    Outcome insertAny()
    {
        const std::string parent = random.bounded(3) == 0 ? "" : anyPath();
        const std::string path = Repository::Documents::joinPath(parent, pick(names));
        const Value value = random.bounded(6) == 0 ? group() : anyValue();
        const std::optional<std::string> null = giveWay(parent);
        for (std::string above = path; !above.empty(); above = parentOf(above))
            model.emplace(above, group());
        if (value.type != Type::Group)
            model[path] = value;
        const Outcome outcome = insert(path, value);
        if (null && document->spell(*null)) // a member of a map, which has no other
            model[*null] = Value{Type::Null, {}};
        return outcome;
    }

    // In yaml, a null without entries gives way to the first one; its path.
    std::optional<std::string> giveWay(std::string above)
    {
        while (!above.empty() && model.count(above) == 0)
            above = parentOf(above);
        const auto place = model.find(above);
        const auto next = model.upper_bound(above + '.');
        const bool hasEntries = next != model.end() && isAtOrBelow(next->first, above);
        if (type == "yaml" && place != model.end() && place->second.type == Type::Null && !hasEntries)
            place->second = group();
        else
            return {};
        return above;
    }

    Outcome removeAny()
    {
        const std::string path = anyPath();
        const Outcome outcome = remove(path);
        if (outcome.ok() && isMoving) {
            const Model now = modelOf(*document);
            if (now.size() > model.size())
                wrong = "moving siblings made entries";
            model = now;
            return outcome;
        }
        for (auto place = model.begin(); place != model.end();)
            place = isAtOrBelow(place->first, path) ? model.erase(place) : std::next(place);
        dropUnfounded(parentOf(path));
        return outcome;
    }

    // A section that only deeper ones named goes with the last of them.
    void dropUnfounded(std::string section)
    {
        for (; !section.empty(); section = parentOf(section)) {
            const auto next = model.upper_bound(section + '.');
            const bool holds = next != model.end() && isAtOrBelow(next->first, section);
            if (holds || document->contains(section))
                return;
            model.erase(section);
        }
    }

    static std::string parentOf(const std::string& path)
    {
        return std::string(Repository::Documents::splitLast(path).parent);
    }

    const std::vector<std::string>& names; // of what is inserted
    Model model;
};

// Many short walks; which are not a test when they get nowhere, or are never refused anything.
template <typename Walk, typename... Arguments>
void walkFromManySeeds(const Arguments&... arguments)
{
    int edits = 0;
    int refusals = 0;
    const auto [first, end] = walkSeeds(2500);
    for (quint32 seed = first; seed < end; ++seed) {
        Walk walk(arguments..., seed);
        for (int step = 0; step < 25; ++step) {
            const QString fault = walk.step();
            QVERIFY2(fault.isEmpty(), qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(fault)));
        }
        edits += walk.edits;
        refusals += walk.refusals;
    }
    QVERIFY2(edits > 20000, qPrintable(QString::number(edits)));
    QVERIFY2(refusals > 3000, qPrintable(QString::number(refusals)));
}

} // namespace EntryLines
