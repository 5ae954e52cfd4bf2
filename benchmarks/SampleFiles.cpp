#include "benchmarks/SampleFiles.h"

#include <QCoreApplication>
#include <QFile>

namespace {

constexpr int keysOfSection = 100;
constexpr int sectionsOfService = 10;

QString serviceName(int key)
{
    return QStringLiteral("service%1").arg(key / keysOfSection / sectionsOfService);
}

QString sectionName(int key)
{
    static const char* const kinds[] = {"network", "storage", "logging", "limits", "display"};
    const int section = key / keysOfSection % sectionsOfService;
    return QLatin1String(kinds[section % 5]) + QString::number(section / 5);
}

QString keyName(int key)
{
    static const char* const names[] = {"listen_address", "timeout", "enabled",      "data_directory",
                                        "retry_limit",    "ratio",   "display_name", "buffer_size",
                                        "verbose",        "endpoint"};
    return QLatin1String(names[key % 10]) + QLatin1Char('_') + QString::number(key % keysOfSection);
}

struct SampleValue
{
    QString text;
    bool isText;
};

SampleValue valueOf(int key)
{
    switch (key % 10) {
    case 0:
        return {QStringLiteral("10.%1.%2.1:8080").arg(key / 250 % 250).arg(key % 250), true};
    case 1:
    case 4:
    case 7:
        return {QString::number(key * 37 % 100000), false};
    case 2:
    case 8:
        return {key % 3 ? QStringLiteral("true") : QStringLiteral("false"), false};
    case 3:
        return {QStringLiteral("/var/lib/service%1/data").arg(key), true};
    case 5:
        return {QString::number(key % 1000) + QStringLiteral(".25"), false};
    case 6:
        return {QStringLiteral("The name of number %1 in lists").arg(key), true};
    default:
        return {QStringLiteral("https://host%1.example.org/status").arg(key), true};
    }
}

bool beginsService(int key)
{
    return key % (keysOfSection * sectionsOfService) == 0;
}

bool beginsSection(int key)
{
    return key % keysOfSection == 0;
}

QString jsonText(int keyCount)
{
    QString text = QStringLiteral("{");
    for (int key = 0; key < keyCount; ++key) {
        if (beginsService(key))
            text += QStringLiteral("%1\n  \"%2\": {")
                        .arg(key ? QStringLiteral("\n    }\n  },") : QString(), serviceName(key));
        if (beginsSection(key))
            text += QStringLiteral("%1\n    \"%2\": {")
                        .arg(beginsService(key) ? QString() : QStringLiteral("\n    },"), sectionName(key));
        const SampleValue value = valueOf(key);
        const QString quote = value.isText ? QStringLiteral("\"") : QString();
        text +=
            QStringLiteral("%1\n      \"%2\": %3%4%3")
                .arg(beginsSection(key) ? QString() : QStringLiteral(","), keyName(key), quote, value.text);
    }
    return text + QStringLiteral("\n    }\n  }\n}\n");
}

QString iniText(int keyCount)
{
    QString text;
    for (int key = 0; key < keyCount; ++key) {
        if (beginsSection(key))
            text += QStringLiteral("%1# Settings of %2\n[%2.%3]\n")
                        .arg(key ? QStringLiteral("\n") : QString(), serviceName(key), sectionName(key));
        text += QStringLiteral("%1=%2\n").arg(keyName(key), valueOf(key).text);
    }
    return text;
}

QString tomlText(int keyCount)
{
    QString text;
    for (int key = 0; key < keyCount; ++key) {
        if (beginsSection(key))
            text += QStringLiteral("%1# Settings of %2\n[%2.%3]\n")
                        .arg(key ? QStringLiteral("\n") : QString(), serviceName(key), sectionName(key));
        const SampleValue value = valueOf(key);
        const QString quote = value.isText ? QStringLiteral("\"") : QString();
        text += QStringLiteral("%1 = %2%3%2\n").arg(keyName(key), quote, value.text);
    }
    return text;
}

QString yamlText(int keyCount)
{
    QString text;
    for (int key = 0; key < keyCount; ++key) {
        if (beginsService(key))
            text += QStringLiteral("%1%2:\n").arg(key ? QStringLiteral("\n") : QString(), serviceName(key));
        if (beginsSection(key))
            text += QStringLiteral("  # Settings of %1\n  %2:\n").arg(serviceName(key), sectionName(key));
        const SampleValue value = valueOf(key);
        const QString quote = value.isText ? QStringLiteral("\"") : QString();
        text += QStringLiteral("    %1: %2%3%2\n").arg(keyName(key), quote, value.text);
    }
    return text;
}

QString xmlText(int keyCount)
{
    QString text = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<services>");
    for (int key = 0; key < keyCount; ++key) {
        if (beginsSection(key) && key)
            text += QStringLiteral("\n    </%1>").arg(sectionName(key - 1));
        if (beginsService(key) && key)
            text += QStringLiteral("\n  </%1>").arg(serviceName(key - 1));
        if (beginsService(key))
            text += QStringLiteral("\n  <!-- Settings of %1 -->\n  <%1>").arg(serviceName(key));
        if (beginsSection(key))
            text += QStringLiteral("\n    <%1>").arg(sectionName(key));
        text += QStringLiteral("\n      <%1>%2</%1>").arg(keyName(key), valueOf(key).text);
    }
    return text + QStringLiteral("\n    </%1>\n  </%2>\n</services>\n")
                      .arg(sectionName(keyCount - 1), serviceName(keyCount - 1));
}

QString txtText(int keyCount)
{
    QString text;
    for (int key = 0; key < keyCount; ++key) {
        if (beginsSection(key))
            text += QStringLiteral("%1# Settings of %2\n")
                        .arg(key ? QStringLiteral("\n") : QString(), serviceName(key));
        text += QStringLiteral("%1 = %2\n").arg(samplePath(QStringLiteral("txt"), key), valueOf(key).text);
    }
    return text;
}

// All keys lie at the root.
QString flatText(int keyCount, const QString& separator)
{
    QString text;
    for (int key = 0; key < keyCount; ++key) {
        const SampleValue value = valueOf(key);
        const QString quote = value.isText ? QStringLiteral("\"") : QString();
        text += samplePath(QStringLiteral("flat"), key) + separator + quote + value.text + quote +
                QLatin1Char('\n');
    }
    return text;
}

QString formatted(const QString& format, int keyCount)
{
    if (format.endsWith(QLatin1String("flat")))
        return flatText(keyCount, format.startsWith(QLatin1String("yaml")) ? QStringLiteral(": ")
                                                                           : QStringLiteral(" = "));
    if (format == QLatin1String("json"))
        return jsonText(keyCount);
    if (format == QLatin1String("ini"))
        return iniText(keyCount);
    if (format == QLatin1String("toml"))
        return tomlText(keyCount);
    if (format == QLatin1String("yaml"))
        return yamlText(keyCount);
    return format == QLatin1String("xml") ? xmlText(keyCount) : txtText(keyCount);
}

} // namespace

QString samplePath(const QString& format, int key)
{
    const QString root = format == QLatin1String("xml") ? QStringLiteral("services.") : QString();
    const QChar separator = QLatin1Char(format.endsWith(QLatin1String("flat")) ? '_' : '.');
    return root + serviceName(key) + separator + sectionName(key) + separator + keyName(key);
}

SampleFiles& SampleFiles::instance()
{
    static SampleFiles files;
    return files;
}

SampleFiles::SampleFiles()
    : folder(QCoreApplication::applicationDirPath() + QStringLiteral("/samples-XXXXXX"))
{
}

const QByteArray& SampleFiles::text(const QString& format, int keyCount)
{
    QByteArray& text = texts[{format, keyCount}];
    if (text.isEmpty())
        text = formatted(format, keyCount).toUtf8();
    return text;
}

QString SampleFiles::file(const QString& format, int keyCount)
{
    const QString name = folder.filePath(QStringLiteral("%1-keys.%2").arg(keyCount).arg(format));
    QFile file(name);
    if (!file.exists() && file.open(QIODevice::WriteOnly))
        file.write(text(format, keyCount));
    return name;
}

QString SampleFiles::alias(const QString& format, int keyCount)
{
    const QString name = freshName() + QLatin1Char('.') + format;
    QFile::link(file(format, keyCount), name);
    return name;
}

QString SampleFiles::freshName()
{
    return folder.filePath(QStringLiteral("fresh-%1").arg(++names));
}
