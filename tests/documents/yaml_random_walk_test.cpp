#include "tests/documents/PathWalk.h"
#include "tests/support/TestRun.h"

using namespace EntryLines;

namespace {

const std::vector<std::string> insertedNames{"k", "k[2]", "j",     "a",   "b", "c", "yes",
                                             "0", "1",    "x%2Ey", "a b", "#", "",  "\xC3\xBC"};

// A small file of what YAML is made of.
class YamlWalk : public PathWalk
{
public:
    explicit YamlWalk(quint32 seed) : PathWalk("yaml", seed, insertedNames)
    {
        lineEnd = random.bounded(4) == 0 ? "\r\n" : "\n";
        std::string bytes = random.bounded(8) == 0 ? broken("---%") : "";
        for (int tries = 0; tries < 8; ++tries) {
            const std::string more = bytes + member(0);
            if (Repository::Documents::makeDocument(type)->parse(more).ok())
                bytes = more;
        }
        if (random.bounded(4) == 0 && !bytes.empty())
            bytes.resize(bytes.size() - lineEnd.size());
        start(bytes + (random.bounded(4) == 0 ? lineEnd + "# end" : ""));
    }

private:
    std::string layout(int indentation)
    {
        static const std::vector<std::string> pieces{"", "", "", "%", "# c%", "%# c%", "# c%%"};
        std::string piece = pick(pieces);
        if (piece[0] == '#')
            piece.insert(0, std::string(std::size_t(indentation), ' '));
        return broken(piece);
    }

    std::string member(int indentation)
    {
        static const std::vector<std::string> keys{"k", "j", "a", "b", "\"x.y\"", "'a b'", "t", "? k", "c"};
        static const std::vector<std::string> ends{"%", "%", " # e%"};
        const std::string blanks(std::size_t(indentation), ' ');
        std::string key = pick(keys);
        const bool isExplicit = key[0] == '?';
        if (random.bounded(10) == 0)
            return layout(indentation) + broken(blanks + "# @type date%" + blanks + "d: '2024-01-02'%");
        std::string text = layout(indentation) + tag(blanks) + blanks + key +
                           (isExplicit ? broken("%" + blanks + ":") : ":");
        const int kind = random.bounded(8);
        if (kind == 0 && indentation < 6)
            return text + broken(pick(ends)) + member(indentation + 2) + member(indentation + 2);
        if (kind == 1 && indentation < 6)
            return text + broken("%") + element(indentation + 2 * random.bounded(2)) +
                   element(indentation + 2 * random.bounded(2));
        if (kind == 2)
            return text + broken(block(indentation + 2));
        return text + ' ' + value(0) + broken(pick(ends));
    }

    std::string element(int indentation)
    {
        const std::string blanks(std::size_t(indentation), ' ');
        const int kind = random.bounded(4);
        if (kind == 0 && indentation < 6)
            return blanks + "- " + member(indentation + 2).substr(std::size_t(indentation) + 2) +
                   member(indentation + 2);
        return layout(indentation) + tag(blanks) + blanks + "- " +
               (random.bounded(8) == 0 ? "'2024-01-02'" : value(0)) + lineEnd;
    }

    std::string tag(const std::string& blanks)
    {
        return random.bounded(12) == 0 ? blanks + "# @type date" + lineEnd : std::string();
    }

    std::string block(int indentation)
    {
        static const std::vector<std::string> blocks{" |%@a%@ b%", " |- # c%@a%%@b%", " >%@a%@b%%@c%",
                                                     " |+%@a%%", " >-%@a%"};
        std::string text = pick(blocks);
        for (std::size_t at = text.find('@'); at != std::string::npos; at = text.find('@', at))
            text.replace(at, 1, std::string(std::size_t(indentation), ' '));
        return text;
    }

    std::string value(int depth)
    {
        static const std::vector<std::string> values{"5",
                                                     "0x0F",
                                                     "0o17",
                                                     "-1.5e+3",
                                                     "true",
                                                     "v",
                                                     "v w",
                                                     "\"v\"",
                                                     "'it'",
                                                     "~",
                                                     "",
                                                     "\"a\\tb\"",
                                                     "2024-01-02",
                                                     "no",
                                                     "[]",
                                                     "{}",
                                                     "['a', b]",
                                                     "[a, 1, {b: 2}]",
                                                     "{k: 1, j: [x, y]}",
                                                     "!!str 5",
                                                     "!!binary aGk=",
                                                     "[ 1, x, ]",
                                                     "{ k: v, }"};
        if (depth > 2 || random.bounded(4) != 0)
            return pick(values);
        return random.bounded(2) == 0 ? "[" + value(depth + 1) + ", " + value(depth + 1) + "]"
                                      : "{a: " + value(depth + 1) + ", b: " + value(depth + 1) + "}";
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

class YamlRandomWalkTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsTreeAndFileTheSame() { walkFromManySeeds<YamlWalk>(); }
};

VANTRY_TEST_MAIN(QCoreApplication, YamlRandomWalkTest)

#include "yaml_random_walk_test.moc"
