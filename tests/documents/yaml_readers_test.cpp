#include "repository/documents/common/ComponentCodec.h"
#include "tests/documents/DocumentEdits.h"
#include "tests/support/TestRun.h"

#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <algorithm>

using namespace DocumentEdits;
using namespace Repository::Documents;

namespace {

// Compares each FILE.yaml of a folder with the lines of its FILE.values: the keys and indexes of a place, a
// type, and a text, separated by U+001F. A plain scalar that no edit wrote may be something else to a reader
// by its nature, as "yes" or a date; but nothing else. Files that a reader sees differently before the first
// edit, as those with a key twice, are left out, but not those that were made for this. Says at the end how
// many were compared by each reader.
const char* const pythonReaders = R"(
import base64, glob, math, sys, warnings, yaml
from ruamel.yaml import YAML
warnings.simplefilter('ignore')
def newer(text):
    reader = YAML(typ='safe', pure=True)
    reader.version = (1, 2)
    return reader.load(text)
readers = {'1.1': lambda text: yaml.load(text, yaml.CSafeLoader), '1.2': newer}
plain = {}
def byNature(name, text):
    if (name, text) not in plain:
        try: plain[name, text] = readers[name](text)
        except Exception: plain[name, text] = text
    return plain[name, text]
def shown(v):
    if v is None: return 'null', ''
    if isinstance(v, bool): return 'bool', 'true' if v else 'false'
    if isinstance(v, int): return 'integer', str(v)
    if isinstance(v, float): return 'double', v
    if isinstance(v, str): return 'text', v
    if isinstance(v, bytes): return 'bytes', v.hex()
    if isinstance(v, list): return 'list', '\x1e'.join(str(i) for i in v)
    return type(v).__name__, str(v)
def step(name, v, key):
    if isinstance(v, list): return v[int(key)]
    if key in v: return v[key]
    return v[byNature(name, key)]
def leaves(v):
    if isinstance(v, dict): return sum(map(leaves, v.values())) if v else 0
    if isinstance(v, list) and not all(isinstance(i, str) for i in v): return sum(map(leaves, v))
    return 1
def fault(name, file):
    root = readers[name](open(file + '.yaml', 'rb').read())
    lines = open(file + '.values', encoding='utf-8', newline='').read().split('\x1d')[:-1]
    for line in lines:
        *place, edited, kind, value = line.split('\x1f')
        found = root
        for key in place: found = step(name, found, key)
        seen, text = shown(found)
        if kind == 'double': same = seen == 'double' and (text == float(value) or math.isnan(text) and value == 'nan')
        else: same = seen == kind and text == value
        items = value.split('\x1e')
        if not same and edited == '-' and kind == 'text': same = found == byNature(name, value)
        if not same and edited == '-' and kind == 'list' and isinstance(found, list):
            same = len(found) == len(items) and all(f == i or f == byNature(name, i) for f, i in zip(found, items))
        if not same: return (place, kind, value, seen, text)
    if name == '1.2' and leaves(root) > 2 * len(lines) + 1: return ('number of values', leaves(root), len(lines))
counts = dict.fromkeys(readers, 0)
for base in glob.glob(sys.argv[1] + '/*.base.yaml'):
    for name in readers:
        try:
            found = fault(name, base[:-5])
        except Exception as error: found = repr(error)
        if found and 'made' in base: print(name, base, found)
        if found: continue
        for edited in glob.glob(base[:-10] + '.edit*.yaml'):
            counts[name] += 1
            try: found = fault(name, edited[:-5])
            except Exception as error: found = repr(error)
            if found: print(name, edited, found)
print('compared', *counts.values())
)";

const std::vector<Value>& newValues()
{
    static const std::vector<Value> values{text("no"),
                                           text("017"),
                                           text("1:30"),
                                           text("2024-01-02"),
                                           text("it's\n\"new\"\\\n"),
                                           text(" a\n\n b"),
                                           text("1_000"),
                                           text("- a: #b"),
                                           text("~"),
                                           text("0o17"),
                                           text("=y"),
                                           text("1e3"),
                                           text("\t\xC2\x85"),
                                           number(1e22),
                                           number(-2),
                                           boolean(false),
                                           integer(-7),
                                           null(),
                                           list({"on", "b\nc", "d, e"}),
                                           list({}),
                                           {Type::ByteArray, std::string("\xFF\0a", 3)}};
    return values;
}

} // namespace

// PyYAML, which reads version 1.1, and ruamel.yaml, which reads 1.2, see the values that the tree shows after
// edits of every kind, in real files and in one that always is there.
class YamlReadersTest : public QObject
{
    Q_OBJECT

private slots:
    void seeTheSame()
    {
        std::vector<QByteArray> texts{
            "a: x # c\nb:\n- 1\n- {c: d, e: [f, 2]}\n- |\n  g\nh:\n  i: 'j'\n  k: >-\n    l\n    m\n"};
        const auto linked = DocumentEdits::linkedFiles();
        texts.insert(texts.end(), linked.begin(), linked.end());
        const int made = int(texts.size());
        QDirIterator files(TestSupport::corporaPath(QStringLiteral("yaml")), QDir::Files);
        const int most = std::max(40, qEnvironmentVariableIntValue("VANTRY_WALK_FILES"));
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray bytes = file.readAll();
            const bool isLinked = bytes.contains("<<:") || bytes.contains(": *") || bytes.contains("- *");
            const bool isTaken =
                isLinked ? bytes.size() < 20000 : bytes.size() < 3000 && int(texts.size()) < most;
            if (isTaken && makeDocument("yaml")->parse(bytes.toStdString()).ok())
                texts.push_back(bytes);
        }
        const QTemporaryDir folder;
        int written = 0;
        for (const QByteArray& bytes : texts) {
            const QString origin = QLatin1String(written < made ? "made" : "real");
            const QString name = folder.filePath(origin + QString::number(++written));
            const auto before = makeDocument("yaml");
            QVERIFY(before->parse(bytes.toStdString()).ok());
            write(*before, name + QStringLiteral(".base"), entriesOf(*before));
            for (int kind = 0; kind < 12; ++kind) {
                const auto document = makeDocument("yaml");
                document->parse(bytes.toStdString());
                QRandomGenerator random(quint32(bytes.size() * 31 + kind));
                for (int i = 0; i < 3; ++i)
                    editAnywhere(*document, kind, random);
                write(*document, name + QStringLiteral(".edit%1").arg(kind), entriesOf(*before));
            }
        }
        QProcess python;
        python.start(QStringLiteral("/usr/bin/python3"), // of the packages that have the readers
                     {QStringLiteral("-c"), QString::fromLatin1(pythonReaders), folder.path()});
        QVERIFY(python.waitForFinished(-1));
        QCOMPARE(QString::fromUtf8(python.readAllStandardError()), QString());
        const QStringList lines =
            QString::fromUtf8(python.readAllStandardOutput()).trimmed().split(QLatin1Char('\n'));
        QVERIFY2(lines.size() == 1, qPrintable(lines.mid(0, 20).join(QLatin1Char('\n'))));
        const QStringList counts = lines.last().split(QLatin1Char(' '));
        QVERIFY2(counts.value(1).toInt() >= 12 && counts.value(2).toInt() >= 12, qPrintable(lines.last()));
    }

private:
    static void editAnywhere(Document& document, int kind, QRandomGenerator& random)
    {
        const std::vector<Entry> entries = entriesOf(document);
        if (entries.empty())
            return;
        const Entry& entry = entries[random.bounded(quint32(entries.size()))];
        const std::string above(splitLast(entry.path).parent);
        const Value& value = newValues()[random.bounded(quint32(newValues().size()))];
        const auto excerpt = document.excerpt(entry.path);
        switch (kind) {
        case 0:
        case 1:
        case 2:
        case 3:
            return void(document.set(entry.path, value));
        case 4:
            return void(document.insert(joinPath(entry.path, "added"), value));
        case 5:
            return void(document.insert(joinPath(above, "off.c"), value));
        case 6:
            return void(document.remove(entry.path));
        case 7:
            return void(document.rename(entry.path, "null"));
        case 8:
            return void(excerpt && document.insertExcerpt(joinPath(above, "copied"), *excerpt));
        case 9:
            return void(excerpt && document.insertExcerpt("0123", *excerpt));
        case 10:
            return void(
                document.insertElement(joinPath(entry.path, "0"), {{"k", integer(1)}, {"l.m", value}}));
        default:
            return void(document.moveElement(joinPath(entry.path, "0"), joinPath(entry.path, "1")));
        }
    }

    // One of the new values, which the file did not have before.
    static bool isEdited(const Value& value, const std::vector<Entry>& before)
    {
        const auto isIt = [&](const Value& each) { return FrameworkCore::Values::isSame(each, value); };
        return std::any_of(newValues().begin(), newValues().end(), isIt) &&
               std::none_of(before.begin(), before.end(),
                            [&](const Entry& entry) { return isIt(entry.value); });
    }

    // A value of a map that has entries as well is its member.
    static void write(const Document& document, const QString& name, const std::vector<Entry>& before)
    {
        QFile yaml(name + QStringLiteral(".yaml"));
        QFile values(name + QStringLiteral(".values"));
        QVERIFY(yaml.open(QIODevice::WriteOnly) && values.open(QIODevice::WriteOnly));
        yaml.write(QByteArray::fromStdString(document.getBytes()));
        const std::vector<Entry> entries = entriesOf(document);
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const Value& value = entries[i].value;
            const auto components = splitPath(entries[i].path).value_or(std::vector<std::string_view>());
            const bool isMerge = std::count(components.begin(), components.end(), "<<") > 0;
            if (value.type == Type::Group || isMerge)
                continue;
            std::string line;
            for (const std::string_view component : components)
                line += decodeKey(component).value_or(std::string(component)) + '\x1f';
            if (i + 1 < entries.size() &&
                (entries[i].path.empty() || startsWith(entries[i + 1].path, entries[i].path + '.')))
                line += "#value\x1f";
            std::string shown = toText(value);
            if (const auto* const items = std::get_if<std::vector<std::string>>(&value.data)) {
                shown.clear();
                for (const std::string& item : *items)
                    shown += (&item == items->data() ? "" : "\x1e") + item;
            } else if (value.type == Type::ByteArray) {
                shown = QByteArray::fromStdString(std::get<std::string>(value.data)).toHex().toStdString();
            }
            const std::string kind(value.type == Type::Unsigned ? "integer" : rowOf(value.type).name);
            line += (isEdited(value, before) ? "+\x1f" : "-\x1f") + kind + '\x1f' + shown + '\x1d';
            values.write(QByteArray::fromStdString(line));
        }
    }
};

VANTRY_TEST_MAIN(QCoreApplication, YamlReadersTest)

#include "yaml_readers_test.moc"
