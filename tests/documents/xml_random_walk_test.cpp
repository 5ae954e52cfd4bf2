#include "tests/documents/PathWalk.h"
#include "tests/support/TestRun.h"

using namespace EntryLines;

namespace {

const std::vector<std::string> insertedNames{"k",     "k[2]",     "j",   "k[3]",  "@n",       "@m",
                                             "#text", "#text[2]", "p:k", "@p:n",  "@xmlns:p", "r",
                                             "1",     "x%2Ey",    "a b", "@k[2]", "\xC3\xBC"};

// A small file of what xml is made of.
class XmlWalk : public PathWalk
{
public:
    explicit XmlWalk(quint32 seed) : PathWalk("xml", seed, insertedNames)
    {
        std::string bytes = random.bounded(4) == 0 ? "\xEF\xBB\xBF" : "";
        if (random.bounded(2) == 0)
            bytes += "<?xml version='1.0'?>" + layout();
        if (random.bounded(4) == 0)
            bytes += "<!DOCTYPE r [<!ENTITY e 'x&amp;'>]>";
        start(bytes + layout() + element(0) + layout());
    }

private:
    std::string layout()
    {
        static const std::vector<std::string> pieces{"", "\n", "\r\n  ", "<!-- c -->", "<?p <k/>?>"};
        return pick(pieces);
    }

    std::string element(int depth)
    {
        static const std::vector<std::string> tags{"k", "k", "j", "r", "p:k"};
        static const std::vector<std::string> attributes{"", " n='1'", " m = \"a&#10;'\"", " xmlns:p='u'",
                                                         "\n n=''"};
        static const std::vector<std::string> marks{"<?vantry type=\"date\"?>", "<?vantry type=\"null\"?>\n",
                                                    "<?vantry type=\"string\" attribute=\"n\"?>"};
        const std::string tag = pick(tags);
        const std::string mark = random.bounded(5) == 0 ? pick(marks) : "";
        const std::string head =
            mark + "<" + tag + pick(attributes) + (random.bounded(9) == 0 ? " p:n='2'" : "");
        if (random.bounded(4) == 0)
            return head + "/>";
        std::string inside = layout() + content();
        for (int children = depth > 2 ? 0 : random.bounded(4 - depth); children > 0; --children)
            inside += element(depth + 1) + (random.bounded(3) == 0 ? content() : layout());
        return head + (random.bounded(9) == 0 ? " >" : ">") + inside + "</" + tag + ">";
    }

    std::string content()
    {
        static const std::vector<std::string> pieces{
            "", "", "5", " v ", "2024-01-02", "&lt;", "&#32;true", "<![CDATA[5]]>", "a<!--b-->c"};
        return pick(pieces);
    }
};

} // namespace

class XmlRandomWalkTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsTreeAndFileTheSame() { walkFromManySeeds<XmlWalk>(); }
};

VANTRY_TEST_MAIN(QCoreApplication, XmlRandomWalkTest)

#include "xml_random_walk_test.moc"
