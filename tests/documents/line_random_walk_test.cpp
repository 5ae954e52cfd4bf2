#include "tests/documents/PathWalk.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

using namespace EntryLines;

namespace {

// What the documents of a type are put together from: lines that mean different things in different company.
struct LineFormat
{
    std::string type;
    std::vector<std::string> lines;
    std::vector<std::string> names; // of what is inserted
};

std::vector<LineFormat> genericFormats()
{
    return {{"ini",
             {"[a]",       "; @type date",  "# @type text",  "d = 2024-01-02",
              "[Unit]",    "[a.b]",         " [c]",          "[a] ; of a",
              "[x[2]]",    "k=1",           "k = v",         "  k : w",
              "j",         "  j",           "j = \\",        "j=\\",
              "m = v \\",  "m=v\\",         "    k = \"q\"", "",
              "  ",        "; c",           "# c",           "  # c",
              "n = 5 ; c", "e =",           "e = # c",       "* = t",
              "b = 'x'",   "k=\xC3\xBC\xFF"},
             {"k", "k[2]", "j", "k[3]", "n", "a", "a[2]", "b", "x%2Ey", "%00", "[x]", "p = q", "%3B", "z",
              "%2A", "t\\"}},
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
}

// The dialects have the lines of their format, and some that mean more to one of them.
const std::vector<LineFormat>& formats()
{
    static const std::vector<LineFormat> all = [] {
        std::vector<LineFormat> made = genericFormats();
        const LineFormat generic[] = {made[0], made[1]};
        for (const std::string& type : Repository::Documents::getDialectTypes()) {
            LineFormat dialect = generic[Repository::Documents::formatOf(type) == "ini" ? 0 : 1];
            if (type == dialect.type + ":generic")
                continue;
            dialect.type = type;
            for (const char* line :
                 {"k = \"a", "b\"", "[a \"b\"] c = 1 ; d", "[a][b]", "k[$e]=1", "k = 'q", "!x = 1", "k\\=l:m",
                  "k\\x3d = \\x41", "n = a\\nb\\q", "k = a \\ ", "=", "e\\"})
                dialect.lines.emplace_back(line);
            made.push_back(std::move(dialect));
        }
        return made;
    }();
    return all;
}

class LineWalk : public PathWalk
{
public:
    LineWalk(const LineFormat& format, quint32 seed) : PathWalk(format.type, seed, format.names)
    {
        const std::vector<std::string> lineEnds{"\n", "\r\n", "\r"};
        const std::string lineEnd = pick(lineEnds);
        std::string bytes = random.bounded(4) == 0 ? "\xEF\xBB\xBF" : "";
        for (int lines = random.bounded(14); lines > 0; --lines)
            bytes += pick(format.lines) + (random.bounded(9) == 0 ? pick(lineEnds) : lineEnd);
        if (random.bounded(3) == 0)
            bytes += pick(format.lines);
        start(bytes);
    }
};

} // namespace

class LineRandomWalkTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsTreeAndFileTheSame_data()
    {
        const auto row = TestSupport::columns<int>("format");
        for (const LineFormat& format : formats())
            row(format.type.c_str(), int(&format - formats().data()));
    }

    void keepsTreeAndFileTheSame()
    {
        QFETCH(int, format);
        walkFromManySeeds<LineWalk>(formats()[std::size_t(format)]);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, LineRandomWalkTest)

#include "line_random_walk_test.moc"
