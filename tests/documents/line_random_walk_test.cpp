#include "repository/documents/common/ComponentCodec.h"
#include "tests/documents/EntryLines.h"
#include "tests/support/TestRun.h"

#include <QRandomGenerator>

#include <algorithm>
#include <map>

using namespace EntryLines;
using namespace Repository::Documents;

namespace {

using Model = std::map<std::string, Value>;

Model modelOf(const Document& document)
{
    Model model;
    document.visit([&model](const Entry& entry) { model.emplace(entry.path, entry.value); });
    return model;
}

bool isBelow(const std::string& path, const std::string& above)
{
    return path.size() > above.size() && path.compare(0, above.size(), above) == 0 &&
           path[above.size()] == '.';
}

// What documents of a format are put together from: lines that mean different things in different company.
struct LineFormat
{
    std::string type;
    std::vector<std::string> lines;
    std::vector<std::string> names; // of what is inserted
};

const std::vector<LineFormat>& formats()
{
    static const std::vector<LineFormat> all{
        {"ini",
         {"[a]",       "; @type date",  "# @type text",  "d = 2024-01-02",
          "[Unit]",    "[a.b]",         " [c]",          "[a] ; of a",
          "[x[2]]",    "k=1",           "k = v",         "  k : w",
          "j",         "  j",           "j = \\",        "j=\\",
          "m = v \\",  "m=v\\",         "    k = \"q\"", "",
          "  ",        "; c",           "# c",           "  # c",
          "n = 5 ; c", "e =",           "e = # c",       "* = t",
          "b = 'x'",   "k=\xC3\xBC\xFF"},
         {"k", "k[2]", "j", "k[3]", "n", "a", "a[2]", "b", "x%2Ey", "%00", "[x]", "p = q", "%3B", "z", "%2A",
          "t\\"}},
        {"txt",
         {"k=1",
          "k = v",
          "  k : w",
          "a.b.c = 1",
          "a.b=x",
          "a.*.k = 2",
          "j",
          "j = \\",
          "j=\\",
          "m = v \\",
          "m=v\\",
          "  more",
          "    k = \"q\"",
          "",
          "  ",
          "; c",
          "# c",
          "  # c",
          "e =",
          "# @type text",
          "# @type date",
          "! c",
          "! = 1",
          "b = 'x' # c",
          "a b = 1",
          "x == y",
          "export q = 3",
          "\\!p=4",
          "k\\ l=5",
          "k\xFF=6",
          "a.b = 2024-01-02",
          "=",
          "k=\xC3\xBC\xFF",
          "one two three four = 5"},
         {"k", "k[2]", "k[3]", "a", "b", "a[2]", "x%2Ey", "%00", "[x]", "p = q", "!x", "%3B", "two words",
          " z", "%2A", "t\\", "export e", "-m", "#"}}};
    return all;
}

// What becomes of a document of such lines.
class Walk
{
public:
    Walk(const LineFormat& walkFormat, quint32 seed)
        : format(walkFormat), random(seed), document(makeDocument(format.type))
    {
        const std::vector<std::string> lineEnds{"\n", "\r\n", "\r"};
        lineEnd = pick(lineEnds);
        std::string bytes = random.bounded(4) == 0 ? "\xEF\xBB\xBF" : "";
        for (int lines = random.bounded(14); lines > 0; --lines)
            bytes += pick(format.lines) + (random.bounded(9) == 0 ? pick(lineEnds) : lineEnd);
        if (random.bounded(3) == 0)
            bytes += pick(format.lines);
        document->parse(bytes);
        before = bytes;
        model = modelOf(*document);
    }

    // One random edit; gives what is wrong after it, or nothing.
    QString step()
    {
        before = document->getBytes();
        const Model old = model;
        Outcome outcome;
        switch (random.bounded(6)) {
        case 0:
            outcome = remove();
            break;
        case 1:
        case 2:
            outcome = set();
            break;
        case 3:
            outcome = thereAndBack();
            break;
        default:
            outcome = insert();
        }
        if (!outcome.ok()) {
            ++refusals;
            model = old;
            return document->getBytes() == before ? QString() : fault("a refused edit changed the file");
        }
        ++edits;
        return judge();
    }

    int edits = 0;
    int refusals = 0;

private:
    template <typename List>
    typename List::value_type pick(const List& list)
    {
        return list[std::size_t(random.bounded(int(list.size())))];
    }

    Value anyValue()
    {
        const std::vector<Value> values{boolean(true),
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
                                        {Type::Unsigned, std::uint64_t(18446744073709551615U)}};
        return pick(values);
    }

    std::string anyPath()
    {
        if (model.empty() || random.bounded(8) == 0)
            return pick(std::vector<std::string>{"k", "nowhere", "a.b.k", ""});
        return std::next(model.begin(), random.bounded(int(model.size())))->first;
    }

    Outcome set()
    {
        const std::string path = anyPath();
        const Value value = anyValue();
        action = "set " + path + " to " + toLine(value).toStdString();
        model[path] = value;
        return document->set(path, value);
    }

    // What was set, and what its old spelling brought back.
    Outcome thereAndBack()
    {
        const std::string path = anyPath();
        const Value value = anyValue();
        action = "set " + path + " to " + toLine(value).toStdString() + " and back";
        const std::optional<std::string> spelling = document->spell(path);
        if (spelling.has_value() != document->locate(path).has_value())
            wrong = "a value has a spelling and a place, or neither";
        const Outcome outcome = document->set(path, value);
        if (!outcome.ok())
            return outcome;
        if (!spelling || !document->respell(path, *spelling).ok() || document->getBytes() != before)
            wrong = "the spelling does not bring the bytes back";
        return outcome;
    }

    Outcome insert()
    {
        const std::string parent = random.bounded(3) == 0 ? "" : anyPath();
        const std::string path = joinPath(parent, pick(format.names));
        const Value value = random.bounded(6) == 0 ? group() : anyValue();
        action = "insert " + path + " as " + toLine(value).toStdString();
        for (std::string above = path; !above.empty(); above = std::string(splitLast(above).parent))
            model.emplace(above, group());
        if (value.type != Type::Group)
            model[path] = value;
        return document->insert(path, value);
    }

    Outcome remove()
    {
        const std::string path = anyPath();
        action = "remove " + path;
        const bool moves = document->removalMovesSiblings(path);
        const Outcome outcome = document->remove(path);
        if (outcome.ok() && moves) {
            const Model now = modelOf(*document);
            if (now.size() > model.size())
                wrong = "moving siblings made entries";
            model = now;
            return outcome;
        }
        for (auto place = model.begin(); place != model.end();)
            place =
                place->first == path || isBelow(place->first, path) ? model.erase(place) : std::next(place);
        dropUnfounded(std::string(splitLast(path).parent));
        return outcome;
    }

    // A section that only deeper ones named goes with the last of them.
    void dropUnfounded(std::string section)
    {
        for (; !section.empty(); section = std::string(splitLast(section).parent)) {
            const auto isInside = [&section](const auto& node) { return isBelow(node.first, section); };
            const bool holds = std::any_of(model.begin(), model.end(), isInside);
            if (holds || document->contains(section))
                return;
            model.erase(section);
        }
    }

    QString judge()
    {
        if (wrong)
            return fault(wrong);
        const Model now = modelOf(*document);
        if (now != model)
            return fault("the tree is not what it should be");
        const std::string bytes = document->getBytes();
        if (toLines(format.type.c_str(), bytes) != toLines(*document))
            return fault("the file does not give the tree again");
        for (const auto& [path, value] : model) {
            if (!document->contains(path))
                return fault("a node cannot be found");
        }
        return {};
    }

    QString fault(const char* what) const
    {
        const QStringList parts{
            QString::fromLatin1(what),
            QString::fromStdString(action),
            QStringLiteral("before:"),
            QString::fromStdString(before).replace(QLatin1Char('\r'), QLatin1String("\\r")),
            QStringLiteral("after:"),
            QString::fromStdString(document->getBytes()).replace(QLatin1Char('\r'), QLatin1String("\\r")),
            QStringLiteral("tree:"),
            toLines(*document).join(QLatin1Char('\n')),
            QStringLiteral("read again:"),
            toLines(format.type.c_str(), document->getBytes()).join(QLatin1Char('\n'))};
        return parts.join(QLatin1Char('\n'));
    }

    const LineFormat& format;
    QRandomGenerator random;
    std::unique_ptr<Document> document;
    std::string lineEnd;
    std::string before;
    std::string action;
    Model model;
    const char* wrong = nullptr; // what an edit saw
};

} // namespace

class LineRandomWalkTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsTreeAndFileTheSame_data()
    {
        QTest::addColumn<int>("format");
        for (const LineFormat& format : formats())
            QTest::newRow(format.type.c_str()) << int(&format - formats().data());
    }

    void keepsTreeAndFileTheSame()
    {
        QFETCH(int, format);
        int edits = 0;
        int refusals = 0;
        for (quint32 seed = 0; seed < 4000; ++seed) {
            Walk walk(formats()[std::size_t(format)], seed);
            for (int step = 0; step < 25; ++step) {
                const QString fault = walk.step();
                QVERIFY2(fault.isEmpty(), qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(fault)));
            }
            edits += walk.edits;
            refusals += walk.refusals;
        }
        // A walk that gets nowhere, or is never refused anything, tests nothing.
        QVERIFY2(edits > 30000, qPrintable(QString::number(edits)));
        QVERIFY2(refusals > 5000, qPrintable(QString::number(refusals)));
    }
};

int main(int argc, char** argv)
{
    return TestSupport::runTest<QCoreApplication, LineRandomWalkTest>(argc, argv);
}

#include "line_random_walk_test.moc"
#include "repository/documents/Formats.h"
