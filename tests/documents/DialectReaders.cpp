#include "tests/documents/DialectReaders.h"

#include "tests/support/TestFiles.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

namespace DialectReaders {

namespace {

// What the program writes; nothing when it fails, which fails the test when it cannot even be started.
std::optional<QByteArray> outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForStarted()) {
        QTest::qFail(qPrintable(program + QStringLiteral(" is not installed")), __FILE__, __LINE__);
        return {};
    }
    process.waitForFinished(-1);
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return {};
    return process.readAllStandardOutput();
}

// Of a list of [section, key, value].
std::optional<Entries> fromJson(const std::optional<QByteArray>& json)
{
    if (!json)
        return {};
    Entries entries;
    const QJsonArray rows = QJsonDocument::fromJson(*json).array();
    for (const QJsonValue& row : rows) {
        const QString section = row[0].toString();
        const QString key = row[1].toString();
        entries[section.isEmpty() ? key : section + QLatin1Char('|') + key] += row[2].toString();
    }
    return entries;
}

std::optional<Entries> configparser(const QString& file, const char* parser, const char* commentMarks = "")
{
    const QString script = QStringLiteral(R"(
import configparser, json, sys
parser = configparser.%1(strict=False, inline_comment_prefixes=tuple('%2'))
parser.read_file(open(sys.argv[1], encoding='utf-8', newline=None))
rows = [['DEFAULT', key, value] for key, value in parser.defaults().items()]
for section in parser.sections():
    rows += [[section, key, parser.get(section, key)] for key in parser._sections[section]]
print(json.dumps(rows))
)");
    return fromJson(outputOf(
        QStringLiteral("python3"),
        {QStringLiteral("-c"), script.arg(QLatin1String(parser), QLatin1String(commentMarks)), file}));
}

std::optional<Entries> parseIniFile(const QString& file, const char* mode)
{
    const QString script = QStringLiteral(R"(
$rows = [];
$read = @parse_ini_file($argv[1], true, %1);
if ($read === false) exit(1);
foreach ($read as $section => $values)
    foreach (is_array($values) ? $values : [$section => $values] as $key => $value)
        if (is_array($value))
            foreach ($value as $index => $item) $rows[] = [$section, $key . (is_int($index) ? '[]' : "[$index]"), (string)$item];
        else
            $rows[] = [is_array($values) ? (string)$section : '', (string)$key, (string)$value];
print json_encode($rows);
)");
    return fromJson(outputOf(QStringLiteral("php"), {QStringLiteral("-n"), QStringLiteral("-r"),
                                                     script.arg(QLatin1String(mode)), file}));
}

// A key of KConfig without its options; empty for that of another language, and where variables in the value
// are replaced.
QString plainKey(QString key)
{
    if (key.contains(QRegularExpression(QStringLiteral("\\[\\$i?e"))))
        return {};
    key.remove(QRegularExpression(QStringLiteral("\\[\\$[^\\]]*\\]")));
    key.replace(QLatin1String("\\x3d"), QLatin1String("="));
    return key.contains(QLatin1Char('[')) ? QString() : key.trimmed();
}

} // namespace

std::optional<Entries> git(const QString& file)
{
    const auto output = outputOf(QStringLiteral("git"), {QStringLiteral("config"), QStringLiteral("-f"), file,
                                                         QStringLiteral("--list"), QStringLiteral("-z")});
    if (!output)
        return {};
    Entries entries;
    const QList<QByteArray> rows = output->split('\0');
    for (const QByteArray& row : rows) {
        if (row.isEmpty())
            continue;
        const int end = row.indexOf('\n');
        const QString name = QString::fromUtf8(end < 0 ? row : row.left(end));
        const int first = name.indexOf(QLatin1Char('.'));
        const int last = name.lastIndexOf(QLatin1Char('.'));
        QString path = first < 0 ? QString() : name.left(first) + QLatin1Char('|');
        if (last > first)
            path += name.mid(first + 1, last - first - 1) + QLatin1Char('|');
        entries[path + name.mid(last + 1)] +=
            end < 0 ? QStringLiteral("true") : QString::fromUtf8(row.mid(end + 1));
    }
    return entries;
}

std::optional<Entries> krb5(const QString& file)
{
    const QString script = QStringLiteral(R"(
import ctypes, json, sys
krb5 = ctypes.CDLL('libkrb5.so.3')
profile = ctypes.c_void_p()
if krb5.profile_init_path(sys.argv[1].encode(), ctypes.byref(profile)):
    sys.exit(1)
def ask(function, path):
    names = (ctypes.c_char_p * (len(path) + 1))(*[name.encode() for name in path], None)
    found = ctypes.POINTER(ctypes.c_char_p)()
    if function(profile, names, ctypes.byref(found)):
        return []
    texts = []
    while found[len(texts)] is not None:
        texts.append(found[len(texts)].decode())
    return texts
rows = []
def visit(path):
    for key in dict.fromkeys(ask(krb5.profile_get_relation_names, path)):
        rows.extend(['.'.join(path), key, value] for value in ask(krb5.profile_get_values, path + [key]))
    for group in dict.fromkeys(ask(krb5.profile_get_subsection_names, path)):
        visit(path + [group])
visit([])
print(json.dumps(rows))
)");
    return fromJson(outputOf(QStringLiteral("python3"), {QStringLiteral("-c"), script, file}));
}

std::optional<Entries> python(const QString& file)
{
    return configparser(file, "RawConfigParser");
}

std::optional<Entries> commentedPython(const QString& file)
{
    return configparser(file, "RawConfigParser", ";");
}

std::optional<Entries> supervisor(const QString& file)
{
    return configparser(file, "RawConfigParser", ";#");
}

std::optional<Entries> interpolatingPython(const QString& file)
{
    return configparser(file, "ConfigParser");
}

std::optional<Entries> glib(const QString& file)
{
    const QString script = QStringLiteral(R"(
import json, sys
from gi.repository import GLib
file = GLib.KeyFile()
file.load_from_file(sys.argv[1], GLib.KeyFileFlags.KEEP_TRANSLATIONS)
rows = []
for group in file.get_groups()[0]:
    for key in dict.fromkeys(file.get_keys(group)[0]):
        try:
            value = file.get_string(group, key)
        except GLib.Error:
            value = file.get_value(group, key) # an item of a list has an escape of its own
        rows.append([group, key, value])
print(json.dumps(rows))
)");
    return fromJson(outputOf(QStringLiteral("/usr/bin/python3"), {QStringLiteral("-c"), script, file}));
}

std::optional<Entries> kconfig(const QString& file)
{
    Entries entries;
    QStringList groups;
    const QStringList lines = QString::fromUtf8(TestSupport::contentOf(file)).split(QLatin1Char('\n'));
    for (const QString& each : lines) {
        QString line = each.trimmed();
        if (line.startsWith(QLatin1Char('['))) {
            line.remove(QLatin1String("[$i]"));
            groups = line.mid(1, line.size() - 2).split(QLatin1String("]["));
        }
        const QString key = plainKey(line.left(line.indexOf(QLatin1Char('='))));
        if (key.isEmpty() || line.startsWith(QLatin1Char('#')) || !line.contains(QLatin1Char('=')))
            continue;
        QStringList arguments{QStringLiteral("--file"), file, QStringLiteral("--key"), key};
        for (const QString& group : qAsConst(groups))
            arguments << QStringLiteral("--group") << group;
        const auto output = outputOf(QStringLiteral("kreadconfig5"), arguments);
        if (!output)
            return {};
        entries[(groups << key).join(QLatin1Char('|'))] = QStringList(QString::fromUtf8(output->chopped(1)));
        groups.removeLast();
    }
    return entries;
}

std::optional<Entries> php(const QString& file)
{
    return parseIniFile(file, "INI_SCANNER_NORMAL");
}

std::optional<Entries> rawPhp(const QString& file)
{
    return parseIniFile(file, "INI_SCANNER_RAW");
}

std::optional<Entries> samba(const QString& file)
{
    const auto output = outputOf(QStringLiteral("testparm"),
                                 {QStringLiteral("-s"), QStringLiteral("--skip-logic-checks"), file});
    if (!output)
        return {};
    Entries entries;
    QString section;
    const QStringList lines = QString::fromUtf8(*output).split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        const int equals = line.indexOf(QLatin1String(" = "));
        if (line.startsWith(QLatin1Char('[')))
            section = line.mid(1, line.size() - 2);
        else if (equals > 0)
            entries[section + QLatin1Char('|') + line.left(equals).trimmed()] += line.mid(equals + 3);
    }
    return entries;
}

std::optional<Entries> mysql(const QString& file)
{
    QFile content(file);
    if (!content.open(QIODevice::ReadOnly))
        return {};
    Entries entries;
    const QRegularExpression header(QStringLiteral("^\\s*\\[([^\\]]*)\\]"),
                                    QRegularExpression::MultilineOption);
    QStringList groups;
    for (auto match = header.globalMatch(QString::fromUtf8(content.readAll())); match.hasNext();)
        groups += match.next().captured(1);
    groups.removeDuplicates();
    for (const QString& group : qAsConst(groups)) {
        const auto output =
            outputOf(QStringLiteral("my_print_defaults"), {QStringLiteral("--defaults-file=") + file, group});
        if (!output)
            return {};
        const QStringList options =
            QString::fromUtf8(*output).split(QRegularExpression(QStringLiteral("\n(?=--|$)")));
        for (const QString& option : options) {
            const int equals = option.indexOf(QLatin1Char('='));
            if (equals > 0)
                entries[group + QLatin1Char('|') + option.mid(2, equals - 2)] += option.mid(equals + 1);
        }
    }
    return entries;
}

} // namespace DialectReaders
