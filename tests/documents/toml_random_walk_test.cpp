#include "tests/documents/PathWalk.h"
#include "tests/support/TestRun.h"

using namespace EntryLines;

namespace {

const std::vector<std::string> insertedNames{"k", "k[2]", "j",     "a",   "b", "c", "t",
                                             "0", "1",    "x%2Ey", "a b", "#", "",  "\xC3\xBC"};

// A small file of what TOML is made of.
class TomlWalk : public PathWalk
{
public:
    explicit TomlWalk(quint32 seed) : PathWalk("toml", seed, insertedNames)
    {
        lineEnd = random.bounded(4) == 0 ? "\r\n" : "\n";
        std::string bytes;
        for (int tries = 0; tries < 20; ++tries) {
            const std::string more = bytes + layout() + statement();
            if (Repository::Documents::makeDocument(type)->parse(more).ok())
                bytes = more;
        }
        if (random.bounded(4) == 0 && !bytes.empty())
            bytes.resize(bytes.size() - lineEnd.size());
        start(bytes + (random.bounded(4) == 0 ? lineEnd + "# end" : ""));
    }

private:
    std::string layout()
    {
        static const std::vector<std::string> pieces{"", "", "", "%", "# c%", "%# c%", "# c%%"};
        return broken(pick(pieces));
    }

    std::string statement()
    {
        static const std::vector<std::string> keys{"k",       "j",         "a.k", "a.b.j",
                                                   "\"x.y\"", "'a b' . k", "t.k", "b"};
        static const std::vector<std::string> headers{
            "[a]",     "[a.b]",     "[b]",     "[c.d.e]", "[c]",     "[[t]]",        "[t.b]",
            "[[t.u]]", "[ c . f ]", "[[c.g]]", "[a.c]",   "[b.a.c]", "[[ \"b\".a ]]"};
        static const std::vector<std::string> ends{"%", "%", " # e%"};
        static const std::vector<std::string> indents{"", "", "  "};
        if (random.bounded(3) == 0)
            return broken(pick(indents) + pick(headers) + pick(ends));
        if (random.bounded(8) == 0)
            return broken("# @type date%" + pick(keys) + " = " +
                          (random.bounded(2) == 0 ? "\"2024-01-02\"" : value(0)) + "%");
        const std::string separator = random.bounded(4) == 0 ? "=" : " = ";
        return broken(pick(indents) + pick(keys) + separator + value(0) + pick(ends));
    }

    std::string value(int depth)
    {
        static const std::vector<std::string> values{"5",
                                                     "0x0F",
                                                     "1_000",
                                                     "-1.5e3",
                                                     "true",
                                                     "\"v\"",
                                                     "'it'",
                                                     "\"\"\"%a%b\"\"\"",
                                                     "'''a'''",
                                                     "2024-01-02",
                                                     "\"2024-01-02\"",
                                                     "2024-01-02 10:20:30.1234z",
                                                     "[]",
                                                     "{}",
                                                     "['a', \"b\"]",
                                                     "[%  'a', # one%  # two%  'b'%]",
                                                     "[ 1, 'x', 2, ]",
                                                     "[%  1, # one%  {a = 1},%]",
                                                     "{ k = 1, a.b = 'x', a.c = [1] }"};
        if (depth > 2 || random.bounded(4) != 0)
            return pick(values);
        return random.bounded(2) == 0 ? "[" + value(depth + 1) + ", " + value(depth + 1) + "]"
                                      : "{a=" + value(depth + 1) + ", b = " + value(depth + 1) + "}";
    }

    std::string broken(std::string text) const
    {
        for (std::size_t at = text.find('%'); at != std::string::npos; at = text.find('%', at))
            text.replace(at, 1, lineEnd);
        return text;
    }

    std::string lineEnd;
};

} // namespace

class TomlRandomWalkTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsTreeAndFileTheSame() { walkFromManySeeds<TomlWalk>(); }
};

VANTRY_TEST_MAIN(QCoreApplication, TomlRandomWalkTest)

#include "toml_random_walk_test.moc"
