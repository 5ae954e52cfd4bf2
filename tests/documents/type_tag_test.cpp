#include "repository/documents/common/TypeTag.h"
#include "tests/documents/EntryLines.h"
#include "tests/support/TestRun.h"

using namespace EntryLines;
using namespace Repository::Documents;

class TypeTagTest : public QObject
{
    Q_OBJECT

private slots:
    void givesEachTypeALineOfItsOwn()
    {
        QStringList lines;
        for (int type = int(Type::Null); type <= int(Type::DateTime); ++type) {
            const std::string line = writeTypeTag(type % 2 == 0 ? '#' : ';', Type(type));
            QVERIFY(readTypeTag(line) == Type(type));
            lines += QString::fromStdString(line);
        }
        QCOMPARE(lines.join(QLatin1Char('|')),
                 QStringLiteral("; @type null|# @type bool|; @type integer|# @type unsigned|; @type double|"
                                "# @type text|; @type list|# @type bytes|; @type date|# @type time|"
                                "; @type datetime"));
    }

    void tellsMarksFromComments()
    {
        for (const char* mark : {"#@type date", "\t; \t@type\t date \t", "  # @type date"})
            QVERIFY2(readTypeTag(mark) == Type::Date, mark);
        for (const char* comment :
             {"", "#", "@type date", "# type date", "# @type", "# @type ", "# @typedate", "# @type Date",
              "# @type {string} name", "# @type date of birth", "## @type date", "// @type date",
              "# @types date", "# @type group"})
            QVERIFY2(!readTypeTag(comment), comment);
    }

    void ignoresAMarkThatDoesNotFit()
    {
        QVERIFY(readTaggedValue(Type::String, "5", integer(5)) == text("5"));
        QVERIFY(readTaggedValue(Type::StringList, "a;b", text("a;b")) == list({"a", "b"}));
        QVERIFY(readTaggedValue(Type::Date, "soon", text("soon")) == text("soon"));
    }
};

VANTRY_TEST_MAIN(QCoreApplication, TypeTagTest)

#include "type_tag_test.moc"
