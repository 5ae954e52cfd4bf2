#pragma once

#include "repository/documents/Formats.h"
#include "tests/documents/EntryLines.h"

#include <QByteArray>

#include <ctime>
#include <functional>
#include <memory>

Q_DECLARE_METATYPE(FrameworkCore::Values::Value)

// What the tests of the formats made of lines share: tables of files, and what each of their rows asks of a
// document. A table has the function that adds its columns, one that adds a row, and one that checks it.
class LineFileTables
{
public:
    using Document = Repository::Documents::Document;
    using Outcome = Repository::Documents::Outcome;
    using Value = FrameworkCore::Values::Value;

    explicit LineFileTables(const char* documentType) : type(documentType) {}

    std::unique_ptr<Document> load(const QByteArray& bytes) const
    {
        auto document = Repository::Documents::makeDocument(type);
        return document->parse(bytes.toStdString()).ok() ? std::move(document) : nullptr;
    }

    static void addReadingColumns()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("tree"); // lines with "|" between them
    }

    static void addReading(const char* name, const QByteArray& file, const char* tree)
    {
        QTest::newRow(name) << file << QString::fromUtf8(tree);
    }

    void checkReading() const
    {
        QFETCH(QByteArray, file);
        const auto document = load(file);
        QVERIFY(document);
        QTEST(EntryLines::toLines(*document).join(QLatin1Char('|')), "tree");
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), file);
    }

    static void addRefusalColumns()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QByteArray>("reason"); // with line and column before it, as in "2:1 ..."
    }

    // A document that refuses a file keeps what it held.
    void checkRefusal() const
    {
        QFETCH(QByteArray, file);
        const auto document = load("kept=1\n");
        const Outcome outcome = document->parse(file.toStdString());
        QTEST(QByteArray::number(int(outcome.line)) + ':' + QByteArray::number(int(outcome.column)) + ' ' +
                  QByteArray::fromStdString(outcome.error),
              "reason");
        QCOMPARE(document->getBytes(), std::string("kept=1\n"));
    }

    static void addEditColumns()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<Value>("value");
        QTest::addColumn<QByteArray>("after"); // the file, or why not
    }

    static void addEdit(const char* name, const QByteArray& file, const char* path, const Value& value,
                        const QByteArray& after)
    {
        QTest::newRow(name) << file << QByteArray(path) << value << after;
    }

    void checkSetting() const
    {
        QFETCH(Value, value);
        checkEdit(
            [&value](Document& document, const std::string& path) { return document.set(path, value); });
    }

    void checkInserting() const
    {
        QFETCH(Value, value);
        checkEdit(
            [&value](Document& document, const std::string& path) { return document.insert(path, value); });
    }

    static void addRemovalColumns()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<bool>("moves"); // siblings get other paths
        QTest::addColumn<QByteArray>("after");
    }

    static void addRemoval(const char* name, const QByteArray& file, const char* path, bool moves,
                           const char* after)
    {
        QTest::newRow(name) << file << QByteArray(path) << moves << QByteArray(after);
    }

    void checkRemoving() const
    {
        checkEdit([](Document& document, const std::string& path) {
            [&] { QTEST(document.removalMovesSiblings(path), "moves"); }();
            return document.remove(path);
        });
    }

    // The cost of an edit may not grow with the file, whose lines "lineOf" tells. The work of this process is
    // compared, not the time that passes, and the bound is wide.
    void checkCostOfEdits(const std::function<QByteArray(int)>& lineOf) const
    {
        const auto secondsFor = [&](int entries) {
            QByteArray file;
            for (int i = 0; i < entries; ++i)
                file += lineOf(i);
            const auto document = load(file);
            const std::clock_t start = std::clock();
            for (int i = 0; i < 2000; ++i) {
                const std::string path = "s0.n" + std::to_string(i);
                document->insert(path, EntryLines::integer(i));
                document->set(path, EntryLines::integer(-i));
                document->set("s0.k1", EntryLines::integer(i));
                document->remove(path);
            }
            return double(std::clock() - start) / CLOCKS_PER_SEC;
        };
        const double small = secondsFor(1000);
        const double large = secondsFor(200000);
        QVERIFY2(large < small * 5 + 0.05, qPrintable(QStringLiteral("%1 and %2 s").arg(small).arg(large)));
    }

private:
    // An edit gives the file after it, read anew as the same entries, or the reason and the file as it was.
    void checkEdit(const std::function<Outcome(Document&, const std::string&)>& edit) const
    {
        QFETCH(QByteArray, file);
        QFETCH(QByteArray, path);
        QFETCH(QByteArray, after);
        const auto document = load(file);
        QVERIFY(document);
        const Outcome outcome = edit(*document, path.toStdString());
        const QByteArray bytes = QByteArray::fromStdString(document->getBytes());
        if (outcome.ok()) {
            QCOMPARE(bytes, after);
            QCOMPARE(EntryLines::toLines(type, document->getBytes()), EntryLines::toLines(*document));
        } else {
            QCOMPARE(QByteArray::fromStdString(outcome.error), after);
            QCOMPARE(bytes, file);
        }
    }

    const char* type;
};
