#include "host/Utilities/ModelViews/AdvancedAttributeModel.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"
#include "host/Utilities/RepositoryAccess.h"
#include "tests/host/TreeModelTestBase.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <QFont>
#include <QItemSelectionModel>
#include <QMimeData>
#include <QRandomGenerator>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

using namespace FrameworkCore::AppConfig;
using TestSupport::words;
using Utilities::ModelViews::AdvancedAttributeModel;
using Utilities::ModelViews::AttributeTreeViewModel;

namespace {

// A model under the eyes of Qt's tester.
struct Watched
{
    AdvancedAttributeModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::QtTest};

    QVariant at(int row, int column, int role = Qt::DisplayRole) const
    {
        return model.index(row, column).data(role);
    }

    QString value(int row) const { return at(row, AdvancedAttributeModel::ValueColumn).toString(); }
    bool isGrey(int row) const
    {
        return at(row, AdvancedAttributeModel::NameColumn, Qt::ForegroundRole).isValid();
    }
    bool isLit(int row) const
    {
        return at(row, AdvancedAttributeModel::ValueColumn, Qt::BackgroundRole).isValid();
    }

    // The number in "12:03:04.567 (17)"; 0 for an empty text, -1 for any other.
    int changes(int row) const
    {
        static const QRegularExpression form(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d\\.\\d{3} \\((\\d+)\\)$"));
        const QString text = at(row, AdvancedAttributeModel::LastChangeColumn).toString();
        const auto match = form.match(text);
        return text.isEmpty() ? 0 : match.hasMatch() ? match.captured(1).toInt() : -1;
    }

    bool drop(const QString& type, const QString& content, int row, const QModelIndex& parent = {})
    {
        QMimeData data;
        data.setData(type, content.toUtf8());
        return model.dropMimeData(&data, Qt::CopyAction, row, row < 0 ? -1 : 0, parent);
    }

    // Drags rows of the table to another place in it.
    bool drag(const std::vector<int>& rows, int destination)
    {
        QModelIndexList cells;
        for (const int row : rows)
            cells << model.index(row, 1) << model.index(row, 0);
        const std::unique_ptr<QMimeData> data(model.mimeData(cells));
        return model.dropMimeData(data.get(), Qt::CopyAction, destination, 0, {});
    }
};

const QString plain = QStringLiteral("text/plain");

} // namespace

class AdvancedAttributeModelTest : public TreeModelTestBase
{
    Q_OBJECT

    void write(const QString& path, const QVariant& value) const
    {
        repository->getWriterInterface()->writeAttributeValue(path, value, 8);
    }

private slots:
    void showsWhatAnAttributeIs_data()
    {
        TestSupport::columns<QVariant, int, QString, QString>("value", "access", "shown", "type");
        const auto row = [](const char* name, const QVariant& value, const char* shown, const char* type,
                            AccessMode access = AccessMode::ReadWrite) {
            QTest::newRow(name) << value << int(access) << QString::fromUtf8(shown)
                                << QString::fromLatin1(type);
        };
        row("integer", qlonglong(-7), "-7", "qlonglong");
        row("large", ~qulonglong(0), "18446744073709551615", "qulonglong");
        row("real", 0.1, "0.1", "double");
        row("bool", true, "true", "bool");
        row("text", QStringLiteral("a<b> &\nc"), "a<b> &\u21B5c", "QString", AccessMode::ReadOnly);
        row("list", QStringList({QStringLiteral("x"), QStringLiteral("y z")}), "x,y z", "QStringList");
        row("secret", qlonglong(4711), "", "qlonglong", AccessMode::WriteOnly);
    }

    void showsWhatAnAttributeIs()
    {
        QFETCH(QVariant, value);
        QFETCH(int, access);
        QFETCH(QString, shown);
        QFETCH(QString, type);
        const QString path = text("plant.line.sensor");
        create(path, value, AccessMode(access));
        Watched watched;
        watched.model.loadCustomAttributeList({path});
        QStringList row;
        for (int column = 0; column < watched.model.columnCount(); ++column)
            row.append(watched.at(0, column).toString());
        QCOMPARE(row, QStringList({text("sensor"), shown, type, QString(), path}));

        const bool isReadable = access != int(AccessMode::WriteOnly);
        const bool isNumber = isReadable && value.canConvert<double>() && value.type() != QVariant::Bool &&
                              value.type() != QVariant::String;
        QCOMPARE((watched.at(0, 1, Qt::TextAlignmentRole).toInt() & Qt::AlignRight) != 0, isNumber);
        QCOMPARE(watched.at(0, 1, Qt::EditRole), isReadable ? value : QVariant());
        QCOMPARE(watched.at(0, 1, Qt::FontRole).value<QFont>().italic(), access == int(AccessMode::ReadOnly));
        QVERIFY(!watched.isGrey(0) && !watched.isLit(0));
        QVERIFY(!(watched.model.flags(watched.model.index(0, 1)) & Qt::ItemIsEditable));
        for (const int role : {Qt::DisplayRole, Qt::EditRole, Qt::ToolTipRole, Qt::AccessibleTextRole})
            QVERIFY(isReadable || !watched.at(0, 1, role).toString().contains(text("4711")));
    }

    void aToolTipShowsLongValuesWhole()
    {
        const QString value = QString(3500, QLatin1Char('<')) + text("\nend");
        create(text("long"), value);
        create(text("longer"), QString(100'000, QLatin1Char('x')));
        Watched watched;
        watched.model.loadCustomAttributeList({text("long"), text("longer")});
        QString tip = watched.at(0, 1, Qt::ToolTipRole).toString();
        QVERIFY(tip.count(QChar(0x200B)) > 10); // places to wrap at
        tip.remove(QChar(0x200B));
        QVERIFY(tip.contains(value.toHtmlEscaped()));
        QVERIFY(watched.at(1, 1, Qt::ToolTipRole).toString().size() < 10'000);
    }

    void followsWritesOfOtherThreads()
    {
        constexpr int writes = 20'000;
        const QStringList paths = words("a.x a.y a.z");
        for (const QString& path : paths)
            create(path, qlonglong(-1));
        Watched watched;
        watched.model.loadCustomAttributeList(paths);
        QCOMPARE(watched.value(0), text("-1"));
        QSignalSpy told(&watched.model, &QAbstractItemModel::dataChanged);
        QElapsedTimer timer;
        timer.start();
        const auto before = QDateTime::currentDateTime();
        std::atomic<int> running{2};
        std::vector<std::thread> writers;
        for (const int number : {0, 1}) {
            writers.emplace_back([&, number] {
                for (int i = 0; i < writes; ++i)
                    write(paths[number], qlonglong(i));
                --running;
            });
        }
        QTRY_COMPARE_WITH_TIMEOUT(running.load(), 0, 60'000);
        for (std::thread& writer : writers)
            writer.join();
        write(paths[1], qlonglong(writes - 1)); // changes nothing
        QTRY_COMPARE(watched.value(0) + watched.value(1), QString::number(writes - 1).repeated(2));
        QTRY_COMPARE(watched.changes(0), writes);
        QTRY_COMPARE(watched.changes(1), writes);
        QCOMPARE(watched.changes(2), 0);
        QVERIFY2(told.size() <= 3 + timer.elapsed() / 16, qPrintable(QString::number(told.size())));

        const QString tip =
            watched.at(0, AdvancedAttributeModel::LastChangeColumn, Qt::ToolTipRole).toString();
        const auto time = QDateTime::fromString(
            QRegularExpression(text("\\d{4}-\\d\\d-\\d\\d [\\d:.]+")).match(tip).captured(),
            Qt::ISODateWithMs);
        QVERIFY2(before.addMSecs(-10) <= time && time <= QDateTime::currentDateTime(), qPrintable(tip));
    }

    void lightsWhatHasJustChanged()
    {
        create(text("a"), 1);
        create(text("b"), 1);
        Watched watched;
        watched.model.loadCustomAttributeList({text("a"), text("b")});
        QVERIFY(!watched.isLit(0));
        write(text("a"), 2);
        QTRY_VERIFY(watched.isLit(0));
        QVERIFY(!watched.isLit(1));
        watched.model.moveRows({}, 0, 1, {}, 2); // the light goes with its row
        QVERIFY(!watched.isLit(0) && watched.isLit(1));
        QSignalSpy told(&watched.model, &QAbstractItemModel::dataChanged);
        QTRY_VERIFY(!watched.isLit(1));
        QCOMPARE(told.size(), 1);
        QCOMPARE(told.first().first().toModelIndex().row(), 1);
    }

    void missingAttributesComeAliveAndGo()
    {
        const QStringList paths = words("a.new a..b *.c new");
        Watched watched;
        watched.model.loadCustomAttributeList(paths);
        for (int row = 0; row < paths.size(); ++row)
            QVERIFY(watched.isGrey(row) && watched.at(row, 4).toString() == paths[row]);
        std::thread([this] { create(text("a.new"), text("here")); }).join();
        QTRY_VERIFY(!watched.isGrey(0));
        QCOMPARE(watched.value(0), text("here"));
        create(text("x.c"), 1); // a path is not a pattern
        std::thread([this] { remove(text("a.new")); }).join();
        QTRY_VERIFY(watched.isGrey(0));
        QCOMPARE(watched.value(0), QString());
        QCOMPARE(watched.changes(0), 2);
        QCOMPARE(watched.changes(2), 0);
    }

    void loadingReplacesTheRows()
    {
        create(text("a"), 1);
        Watched watched;
        watched.model.loadCustomAttributeList({text("gone")});
        watched.model.loadCustomAttributeList(
            {text("b"), QString(), text("a\r"), text("\r"), text("b\r\r"), text("\r\r"), QString()});
        QCOMPARE(watched.model.getAttributeFullPathList(), words("b a b"));
        watched.model.loadCustomAttributeList(watched.model.getAttributeFullPathList());
        QCOMPARE(watched.model.getAttributeFullPathList(), words("b a b"));

        const int count = fake ? 5'000 : 100'000; // the fake one has to search
        QStringList many;
        for (int i = 0; i < count; ++i)
            many.append(text("many.%1").arg(i));
        watched.model.loadCustomAttributeList(many);
        QCOMPARE(watched.model.getAttributeFullPathList(), many);
        QVERIFY(watched.isGrey(count - 1));
        create(many.last(), text("found")); // whether it is watched by now or not
        QTRY_COMPARE(watched.value(count - 1), text("found"));
        watched.model.loadCustomAttributeList({});
        QCOMPARE(watched.model.rowCount(), 0);
    }

    void dropsAddRows_data()
    {
        TestSupport::columns<bool, QString, int, QString>("fromTree", "dropped", "row", "rows");
        const auto drop = [](const char* name, bool fromTree, const char* dropped, int row,
                             const char* rows) {
            QTest::newRow(name) << fromTree << QString::fromLatin1(dropped) << row
                                << QString::fromLatin1(rows);
        };
        drop("an item", true, "other", -1, "known m other");
        drop("at a row", true, "other", 1, "known other m");
        drop("before all", true, "other", 0, "other known m");
        drop("beyond the end", true, "other", 77, "known m other");
        drop("several items", true, "other known g.z", 2, "known m other g.z");
        drop("a group", true, "g", 0, "g.z g.y.q g.y.p g.a.a known m");
        drop("an attribute with children", true, "g.y", 0, "g.y.q g.y.p known m");
        drop("a group and one of its own", true, "g.y.p g", 1, "known g.y.p g.z g.y.q g.a.a m");
        drop("lines", false, " other \r\n\r\n\tnew.one\n other\rm\n\n", 1, "known other new.one m");
        drop("a group of a line", false, "g.a", -1, "known m g.a.a");
        drop("nothing", false, " \r\n\n", -1, "known m");
        drop("what is there", false, "m\nknown", 0, "known m");
    }

    void dropsAddRows()
    {
        QFETCH(bool, fromTree);
        QFETCH(QString, dropped);
        QFETCH(int, row);
        QFETCH(QString, rows);
        for (const QString& path : words("g.z g.y.q g.y.p g.a.a other known"))
            create(path, 1);
        Watched watched;
        watched.model.loadCustomAttributeList(words("known m"));
        bool isChanged = false;
        if (fromTree) {
            AttributeTreeViewModel tree;
            tree.resetModel({});
            QModelIndexList items;
            for (const QString& path : words(dropped))
                items << tree.indexFromPath(path)
                      << tree.indexFromPath(path, AttributeTreeViewModel::ValueColumn);
            const std::unique_ptr<QMimeData> data(tree.mimeData(items));
            QVERIFY(watched.model.canDropMimeData(data.get(), Qt::CopyAction, row, 0, {}));
            isChanged = watched.model.dropMimeData(data.get(), Qt::CopyAction, row, 0, {});
        } else {
            isChanged = watched.drop(plain, dropped, row);
        }
        QCOMPARE(watched.model.getAttributeFullPathList(), words(rows));
        QCOMPARE(isChanged, rows != text("known m"));
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(text("/etc/hosts"))});
        QVERIFY(!watched.model.canDropMimeData(&files, Qt::CopyAction, -1, -1, {}));
    }

    void largeDropsAreConfirmed()
    {
        for (int i = 0; i < 502; ++i)
            create(text("group.%1").arg(i), i);
        Watched watched;
        watched.model.loadCustomAttributeList(words("group.0 end"));
        int asked = 0;
        bool isWelcome = false;
        watched.model.setLargeDropConfirmation([&](int attributes) {
            asked = attributes;
            watched.model.removeRows(0, 1); // what may happen while a dialog is open
            return isWelcome;
        });
        QVERIFY(watched.drop(plain, text("group"), 1));
        QCOMPARE(asked, 0); // not while the view is still in its drop
        QTRY_COMPARE(asked, 501);
        QCOMPARE(watched.model.getAttributeFullPathList(), words("end"));
        isWelcome = true;
        watched.model.loadCustomAttributeList(words("group.7 first end"));
        QVERIFY(watched.drop(plain, text("group"), 2));
        QTRY_COMPARE(watched.model.rowCount(), 504);
        QCOMPARE(watched.at(1, 4).toString() + watched.at(503, 4).toString(), text("group.0end"));
        asked = 0;
        watched.model.loadCustomAttributeList(words("group.7 group.8"));
        watched.model.removeRows(1, 1);
        create(text("fits.a"), 1);
        QVERIFY(watched.drop(plain, text("fits"), 0));
        QCOMPARE(watched.model.rowCount(), 2);
        QCOMPARE(asked, 0);
    }

    // Against a plain list of texts.
    void staysInStepUnderRandomChanges()
    {
        QStringList expected;
        for (int i = 0; i < 12; ++i) {
            expected.append(text("n%1").arg(i));
            create(expected.last(), qlonglong(i));
        }
        Watched watched;
        watched.model.loadCustomAttributeList(expected);
        QItemSelectionModel selection(&watched.model);
        QRandomGenerator random(3);
        for (int step = 0; step < 400; ++step) {
            const int size = expected.size();
            const int row = random.bounded(size);
            const int place = random.bounded(size + 1);
            const QString selected = expected[row];
            selection.setCurrentIndex(watched.model.index(row, 4), QItemSelectionModel::ClearAndSelect);
            if (random.bounded(2) == 0) {
                std::vector<int> moved;
                for (int i = random.bounded(1, 5); i > 0; --i)
                    moved.push_back(random.bounded(size));
                QStringList parts[3]; // before the place, moved, behind it
                for (int i = 0; i < size; ++i) {
                    const bool isMoved = std::find(moved.begin(), moved.end(), i) != moved.end();
                    parts[isMoved ? 1 : i < place ? 0 : 2].append(expected[i]);
                }
                expected = parts[0] + parts[1] + parts[2];
                QVERIFY(watched.drag(moved, place));
            } else {
                const int count = random.bounded(1, 4);
                const bool isPossible = row + count <= size && (place < row || place > row + count);
                QCOMPARE(watched.model.moveRows({}, row, count, {}, place), isPossible);
                const QStringList taken = expected.mid(row, count);
                for (int i = 0; isPossible && i < count; ++i)
                    expected.insert(place > row ? place - 1 : place + i,
                                    expected.takeAt(place > row ? row : row + i));
            }
            QCOMPARE(watched.model.getAttributeFullPathList(), expected);
            QCOMPARE(selection.currentIndex().data().toString(), selected);
            QCOMPARE(selection.selectedIndexes().size(), 1);
        }
        for (int row = 0; row < expected.size(); ++row)
            write(expected[row], 1000 + row);
        QTRY_COMPARE(watched.value(11), text("1011"));
        QTRY_COMPARE(watched.value(0), text("1000"));
        QVERIFY(!watched.model.removeRows(10, 3));
        QVERIFY(watched.model.removeRows(2, 9));
        QCOMPARE(watched.model.getAttributeFullPathList(),
                 QStringList({expected[0], expected[1], expected[11]}));
    }

    void mayChangeAndGoDuringAStorm()
    {
        const QStringList paths = words("s.a s.b s.c s.d");
        for (const QString& path : paths)
            create(path, 0);
        std::atomic<bool> isOver{false};
        std::vector<std::thread> writers;
        for (int number = 0; number < 2; ++number) {
            writers.emplace_back([&] {
                for (qlonglong i = 0; !isOver; ++i) {
                    write(paths[int(i % 4)], i);
                    if (i % 64 == 0)
                        std::this_thread::yield();
                }
            });
        }
        for (int round = 0; round < 60; ++round) {
            Watched watched;
            watched.model.loadCustomAttributeList(paths + paths);
            QSignalSpy told(&watched.model, &QAbstractItemModel::dataChanged);
            if (round % 3 == 0)
                QVERIFY(told.wait());
            watched.model.removeRows(round % 5, 3);
            watched.drag({0, 2}, 4);
            QCoreApplication::processEvents();
        }
        isOver = true;
        for (std::thread& writer : writers)
            writer.join();
    }

    void withoutRepositoryRowsWaitForOne()
    {
        Utilities::SetAppConfigRepositoryInterface({});
        create(text("a"), 5);
        Watched watched;
        watched.model.loadCustomAttributeList({text("a")});
        QVERIFY(watched.isGrey(0) && watched.drop(plain, text("b\nc"), 0));
        QCOMPARE(watched.model.getAttributeFullPathList(), words("b c a"));
        Utilities::SetAppConfigRepositoryInterface(repository);
        QVERIFY(watched.drop(plain, text("d"), -1));
        QCOMPARE(watched.value(2), text("5"));
        write(text("a"), 6);
        QTRY_COMPARE(watched.value(2), text("6"));
    }
};

VANTRY_TEST_MAIN(QApplication, AdvancedAttributeModelTest)

#include "advanced_attribute_model_test.moc"
