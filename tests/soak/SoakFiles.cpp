#include "tests/soak/SoakFiles.h"

#include "tests/support/TestFiles.h"

#include <QDir>

namespace Soak {

namespace {

constexpr int sections = 8;
constexpr int entries = 12;
constexpr const char* endings[] = {"ini", "json", "xml", "txt"};

// One in seven values is another in each round.
QByteArray valueOf(int section, int entry, unsigned round)
{
    const unsigned number = unsigned(section * entries + entry);
    return QByteArray::number(number % 7 == round % 7 ? number + round : number);
}

QByteArray line(const char* format, const QByteArray& section, const QByteArray& entry,
                const QByteArray& value)
{
    return QByteArray(format).replace("SECTION", section).replace("ENTRY", entry).replace("VALUE", value);
}

struct Format
{
    const char* begin;
    const char* beginSection;
    const char* entry;
    const char* lastEntry;
    const char* endSection;
    const char* lastSection;
    const char* end;
};

Format formatOf(const QString& name)
{
    if (name.endsWith(QLatin1String("json")))
        return {"{\n",
                "  \"SECTION\": {\n",
                "    \"ENTRY\": VALUE,\n",
                "    \"ENTRY\": VALUE\n",
                "  },\n",
                "  }\n",
                "}\n"};
    if (name.endsWith(QLatin1String("xml")))
        return {"<plant>\n",
                "  <SECTION>\n",
                "    <ENTRY>VALUE</ENTRY>\n",
                "    <ENTRY>VALUE</ENTRY>\n",
                "  </SECTION>\n",
                "  </SECTION>\n",
                "</plant>\n"};
    if (name.endsWith(QLatin1String("txt")))
        return {"# a plant\n", "", "SECTION.ENTRY = VALUE\n", "SECTION.ENTRY = VALUE\n", "", "", ""};
    return {"; a plant\n", "[SECTION]\n", "ENTRY = VALUE\n", "ENTRY = VALUE\n", "", "", ""};
}

} // namespace

SoakFiles::SoakFiles(const QString& folder, int count)
{
    for (int number = 0; number < count; ++number) {
        const QString name = QStringLiteral("plant%1.%2")
                                 .arg(number, 3, 10, QLatin1Char('0'))
                                 .arg(QLatin1String(endings[number % 4]));
        names.append(TestSupport::writeFile(QDir(folder).filePath(name), content(name, 0)));
    }
}

QByteArray SoakFiles::content(const QString& name, unsigned round)
{
    const Format format = formatOf(name);
    QByteArray text = format.begin;
    for (int section = 0; section < sections; ++section) {
        const QByteArray sectionName = "section" + QByteArray::number(section);
        text += line(format.beginSection, sectionName, {}, {});
        for (int entry = 0; entry < entries; ++entry)
            text += line(entry < entries - 1 ? format.entry : format.lastEntry, sectionName,
                         "entry" + QByteArray::number(entry), valueOf(section, entry, round));
        text += line(section < sections - 1 ? format.endSection : format.lastSection, sectionName, {}, {});
    }
    return text + format.end;
}

} // namespace Soak
