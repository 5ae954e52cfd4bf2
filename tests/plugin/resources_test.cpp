#include "tests/support/TestRun.h"

#include <QDir>
#include <QGuiApplication>
#include <QIcon>
#include <QImageReader>
#include <QTranslator>

#include <algorithm>
#include <cmath>

namespace {

const char* const buttonImages[] = {"a.png",
                                    "b.png",
                                    "attribute.png",
                                    "backend.png",
                                    "new_backend.png",
                                    "save_backend.png",
                                    "bin_recycle.png",
                                    "toggle.png",
                                    "toggle_expand.png",
                                    "save_as.png",
                                    "save.png",
                                    "open.png",
                                    "new_data.png",
                                    "save_data.png",
                                    "data_validation.png",
                                    "copy.png",
                                    "cut.png",
                                    "paste.png",
                                    "import.png",
                                    "export.png",
                                    "rename.png",
                                    "create.png",
                                    "edit.png",
                                    "delete.png",
                                    "arrow_refresh_small.png",
                                    "toolbar_add.png"};

QString resource(const char* name)
{
    return QLatin1String(":/Vantry/Resources/") + QLatin1String(name);
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QImage imageOf(const QString& path)
{
    return QImage(path).convertToFormat(QImage::Format_ARGB32);
}

// Relative luminance as the accessibility guidelines of the web define it.
double luminance(QRgb colour)
{
    const auto linear = [](int channel) {
        const double part = channel / 255.0;
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
}

double contrast(QRgb one, QRgb other)
{
    const auto [low, high] = std::minmax({luminance(one), luminance(other)});
    return (high + 0.05) / (low + 0.05);
}

} // namespace

// What the module carries: a missing, mistaken or doubled file shows to the person as an empty or wrong
// button and is never reported at run time.
class ResourcesTest : public QObject
{
    Q_OBJECT

private slots:
    void holdsTheNamedFilesOnly()
    {
        QStringList expected = {QStringLiteral("icon.ico"), QStringLiteral("icon.png"),
                                QStringLiteral("progress_bar.gif")};
        for (const char* name : buttonImages)
            expected.append(QLatin1String(name));
        expected.sort();
        const QDir folder(QStringLiteral(":/Vantry/Resources"));
        QCOMPARE(folder.entryList(QDir::Files, QDir::Name), expected);
    }

    void buttonImageIsSeenOnLightAndDark_data()
    {
        QTest::addColumn<QString>("path");
        for (const char* name : buttonImages)
            QTest::addRow("%s", name) << resource(name);
    }

    void buttonImageIsSeenOnLightAndDark()
    {
        QFETCH(QString, path);
        const QImage image = imageOf(path);
        QCOMPARE(image.size(), QSize(48, 48));
        QVERIFY2(bytesOf(path).size() < 3 * 1024, "not packed small");

        int painted = 0;
        int seen = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QRgb colour = image.pixel(x, y);
                if (qAlpha(colour) < 200)
                    continue;
                ++painted;
                if (contrast(colour, qRgb(255, 255, 255)) >= 3.0 && contrast(colour, qRgb(43, 43, 43)) >= 3.0)
                    ++seen;
            }
        }
        QVERIFY2(painted > 100, "nearly empty");
        QVERIFY2(painted < 48 * 48 * 3 / 4, "the background is painted");
        QVERIFY2(seen * 4 > painted * 3, "fades on a light or a dark background");
    }

    void noTwoImagesAreAlike()
    {
        QVector<QPair<QString, QImage>> images;
        for (const QFileInfo& file : QDir(QStringLiteral(":/Vantry/Resources")).entryInfoList(QDir::Files)) {
            QImageReader reader(file.filePath());
            if (file.suffix() != QLatin1String("gif"))
                QVERIFY2(reader.imageCount() > 0, qPrintable(file.filePath()));
            // The pictures of an icon differ in size, so that of the size of icon.png meets it here.
            for (int i = 0; i < (file.suffix() == QLatin1String("ico") ? reader.imageCount() : 1); ++i) {
                reader.jumpToImage(i);
                const QImage image = reader.read().convertToFormat(QImage::Format_ARGB32);
                QVERIFY2(!image.isNull(), qPrintable(file.filePath()));
                for (const auto& [name, other] : qAsConst(images))
                    QVERIFY2(image != other, qPrintable(file.filePath() + QLatin1String(" is ") + name));
                images.append({file.filePath(), image});
            }
        }
    }

    void hostDrawsTheTreeWithTheSameImages()
    {
        for (const char* name : {"attribute.png", "backend.png"}) {
            const QImage own = imageOf(QLatin1String(":/VantryHost/") + QLatin1String(name));
            QVERIFY2(!own.isNull(), name);
            QCOMPARE(own, imageOf(resource(name)));
        }
    }

    void applicationIconHasEverySize()
    {
        QList<QSize> sizes = QIcon(resource("icon.ico")).availableSizes();
        std::sort(sizes.begin(), sizes.end(), [](QSize a, QSize b) { return a.width() < b.width(); });
        QList<QSize> expected;
        for (const int side : {16, 24, 32, 48, 64, 128, 256})
            expected.append(QSize(side, side));
        QCOMPARE(sizes, expected);
    }

    // Every frame must differ from the one before, the first from the last too, or the movement halts.
    void busyAnimationMovesAllTheTime()
    {
        QImageReader reader(resource("progress_bar.gif"));
        QVERIFY(reader.supportsAnimation());
        QVERIFY(reader.imageCount() >= 12);
        QVector<QImage> frames;
        while (reader.canRead()) {
            frames.append(reader.read().convertToFormat(QImage::Format_ARGB32));
            QVERIFY2(reader.nextImageDelay() >= 20, "a delay below that is drawn slowly by many viewers");
        }
        QCOMPARE(frames.size(), reader.imageCount());
        QCOMPARE(reader.loopCount(), -1);
        for (int i = 0; i < frames.size(); ++i) {
            const QImage& next = frames.at((i + 1) % frames.size());
            QVERIFY2(frames.at(i) != next, qPrintable(QString::number(i)));
            QCOMPARE(qAlpha(frames.at(i).pixel(0, 0)), 0);
        }
    }

    void translationHoldsNoMessages_data()
    {
        QTest::addColumn<QString>("locale");
        for (const char* locale : {"en_US", "zh_CN", "es_ES", "ru_RU", "de_DE"})
            QTest::addRow("%s", locale) << QString::fromLatin1(locale);
    }

    void translationHoldsNoMessages()
    {
        QFETCH(QString, locale);
        const QString path = QLatin1String(":/Translations/Vantry_") + locale + QLatin1String(".qm");
        const QByteArray bytes = bytesOf(path);
        QVERIFY(bytes.startsWith(QByteArray::fromHex("3cb86418caef9c95cd211cbf60a1bddd")));
        QVERIFY2(bytes.contains(locale.toLatin1()), "made for another language");
        // Whether Qt calls a file without messages loaded depends on its version.
        QTranslator translator;
        static_cast<void>(translator.load(path));
        QVERIFY(translator.isEmpty());
    }

    void versionDescriptionKeepsItsForm()
    {
        const QByteArray bytes = bytesOf(QStringLiteral(":/Vantry.vft"));
        QVERIFY(bytes.endsWith("\r\n"));
        QList<QByteArray> lines = bytes.split('\n');
        lines.removeLast();
        QByteArrayList keys;
        for (QByteArray& line : lines) {
            QVERIFY2(line.endsWith('\r'), line.constData());
            line.chop(1);
            QVERIFY2(line.contains('=') != line.startsWith('['), line.constData());
            QVERIFY2(!line.endsWith('='), "a key without a value");
            keys.append(line.left(line.indexOf('=')));
        }
        const QByteArrayList expected = {"[Version]",        "Comments",        "CompanyName",
                                         "FileDescription",  "FileVersion",     "LegalCopyright",
                                         "OriginalFilename", "ProductName",     "ProductVersion",
                                         "InternalName",     "LegalTrademarks", "VersionHash"};
        keys.first() = lines.first();
        QCOMPARE(keys, expected);
        QVERIFY2(lines.contains("FileVersion=" VANTRY_VERSION), "the build has another version");
        QVERIFY2(lines.contains("ProductVersion=" VANTRY_VERSION), "the build has another version");
    }
};

VANTRY_TEST_MAIN(QGuiApplication, ResourcesTest)

#include "resources_test.moc"
