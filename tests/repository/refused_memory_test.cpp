#include "repository/merge/EditedDocument.h"
#include "tests/documents/EntryLines.h"
#include "tests/support/TestRun.h"

#include <QCoreApplication>

#include <cstdlib>
#include <functional>
#include <new>

using namespace EntryLines;
using Repository::Documents::getDocumentTypes;
using Repository::Documents::makeDocument;
using Repository::Documents::Outcome;

namespace {

// Of a thread: until one is refused; none is while it is negative.
thread_local int allocationsLeft = -1;

void* allocate(std::size_t size)
{
    if (allocationsLeft == 0)
        return nullptr;
    if (allocationsLeft > 0)
        --allocationsLeft;
    return std::malloc(size == 0 ? 1 : size);
}

} // namespace

void* operator new(std::size_t size)
{
    if (void* memory = allocate(size))
        return memory;
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return allocate(size);
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return allocate(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}

// Every single allocation of an edit refused: what the file holds is never lost, and what is half done is
// never taken for the document.
class RefusedMemoryTest : public QObject
{
    Q_OBJECT

    using Edit = std::function<Outcome(Document&)>;

    static std::string sample(const std::string& type)
    {
        if (type == "ini")
            return "; c\na = 1\n\n[g]\nlong name of a key = a long value of a text that is on the heap\nb = "
                   "x\n";
        if (type == "json")
            return "{\n  \"a\": 1,\n  \"g\": {\"long name of a key\": \"a long value of a text that is on "
                   "the heap\", "
                   "\"b\": [\"x\"]}\n}\n";
        if (type == "xml")
            return "<r>\n  <a>1</a>\n  <g b='a long value of an attribute that is on the heap'>\n    "
                   "<long-name/>\n  "
                   "</g>\n</r>\n";
        if (type == "toml")
            return "a = 1\n\n[g]\nlong = \"a long value of a text that is on the heap\"\nb = [\"x\"]\n";
        if (type == "yaml")
            return "a: 1\n\ng:\n  long: \"a long value of a text that is on the heap\"\n  b: [x]\n";
        return "a = 1\ng.long = a long value of a text that is on the heap\ng.b = x\n";
    }

    static QStringList linesOf(const Document& document)
    {
        QStringList lines;
        document.visit([&](const Entry& entry) {
            lines.append(QString::fromStdString(entry.path) + QStringLiteral(" = ") + toLine(entry.value));
        });
        return lines;
    }

    static std::vector<std::pair<const char*, Edit>> edits(const std::string& type)
    {
        const std::string root = type == "xml" ? "r." : "";
        const std::string longText(200, 'y');
        const std::vector<Entry> entries{{"x", integer(1)}, {"y", text(longText)}, {"y2.z", number(1.5)}};
        return {{"set", [=](Document& document) { return document.set(root + "a", text(longText)); }},
                {"insert", [=](Document& document) { return document.insert(root + "n", text(longText)); }},
                {"insert with a type tag",
                 [=](Document& document) { return document.insert(root + "n", number(1.5)); }},
                {"insert with groups",
                 [=](Document& document) { return document.insert(root + "m.n.o", integer(1)); }},
                {"insert below",
                 [=](Document& document) { return document.insert(root + "g.n", list({longText})); }},
                {"insert all",
                 [=](Document& document) {
                     std::size_t refused = 0;
                     return document.insertAll(root + "all", entries, refused);
                 }},
                {"remove", [=](Document& document) { return document.remove(root + "g"); }},
                {"remove a value", [=](Document& document) { return document.remove(root + "a"); }},
                {"respell", [=](Document& document) {
                     const auto spelled = document.spell(root + "a");
                     return document.respell(root + "a", spelled.value_or(std::string()));
                 }}};
    }

private slots:
    void keepsTheDocument_data()
    {
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<int>("edit");
        for (const std::string& type : getDocumentTypes()) {
            int number = 0;
            for (const auto& [name, edit] : edits(type))
                QTest::addRow("%s: %s", type.c_str(), name) << QByteArray::fromStdString(type) << number++;
        }
    }

    void keepsTheDocument()
    {
        QFETCH(QByteArray, type);
        QFETCH(int, edit);
        const std::string text = sample(type.toStdString());
        const Edit operation = edits(type.toStdString()).at(std::size_t(edit)).second;
        for (int allocations = 0;; ++allocations) {
            Repository::EditedDocument content(type.toStdString());
            QVERIFY(content.load(text).ok());
            bool isThrown = false;
            Outcome outcome;
            allocationsLeft = allocations;
            try {
                outcome = content.edit(operation);
            } catch (const std::bad_alloc&) {
                isThrown = true;
            }
            const bool isRefused = allocationsLeft == 0;
            allocationsLeft = -1;
            QCOMPARE(content.isDamaged(), isThrown);
            if (!isThrown && !isRefused) {
                QVERIFY(allocations > 0 && outcome.ok());
                return;
            }
            if (isThrown) {
                QVERIFY(content.hasEdits());
                QVERIFY(!content.edit(operation).ok());
                QCOMPARE(content.revert({std::string()}), std::string());
                QVERIFY(!content.isDamaged());
            }
            if (isThrown || !outcome.ok()) {
                QCOMPARE(content.getText(), text);
                outcome = content.edit(operation);
                QVERIFY2(outcome.ok(), outcome.error.c_str());
            }
            const auto again = makeDocument(type.toStdString());
            QVERIFY(again->parse(content.getText()).ok());
            QCOMPARE(linesOf(*again), linesOf(content.getDocument()));
        }
    }
};

VANTRY_TEST_MAIN(QCoreApplication, RefusedMemoryTest)

#include "refused_memory_test.moc"
#include "repository/documents/Formats.h"
