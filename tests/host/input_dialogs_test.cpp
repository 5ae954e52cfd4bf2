#include "host/Utilities/ModelViews/Widgets/AttributeTreeModelInputDialogs.h"
#include "host/Utilities/RepositoryAccess.h"
#include "repository/AttributeRepository.h"
#include "tests/support/Columns.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>

#include <limits>

using TestSupport::DialogDriver;
using TestSupport::words;
using Utilities::ModelViews::Widgets::AttributeTreeModelInputDialogs;

namespace {

template <typename Part>
Part& part(const QWidget& dialog, const char* name)
{
    auto* const found = dialog.findChild<Part*>(QLatin1String(name));
    if (!found)
        qFatal("no part %s", name);
    return *found;
}

QPushButton& button(const QWidget& dialog, const char* text)
{
    for (auto* const candidate : dialog.findChildren<QPushButton*>()) {
        if (candidate->text().remove(QLatin1Char('&')) == QLatin1String(text))
            return *candidate;
    }
    qFatal("no button %s", text);
}

QPushButton& ok(const QWidget& dialog)
{
    return button(dialog, "OK");
}

void click(QWidget& widget)
{
    QTest::mouseClick(&widget, Qt::LeftButton);
}

void type(const QString& text)
{
    QTest::keyClicks(QApplication::focusWidget(), text);
}

void replace(QWidget& field, const QString& text)
{
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&field, Qt::Key_Delete);
    QTest::keyClicks(&field, text);
}

// By the keyboard.
void choose(QComboBox& box, const QString& text)
{
    const int wanted = box.findText(text, Qt::MatchStartsWith);
    QVERIFY2(wanted >= 0, qPrintable(text));
    box.setFocus();
    while (box.currentIndex() != wanted)
        QTest::keyClick(&box, box.currentIndex() < wanted ? Qt::Key_Down : Qt::Key_Up);
}

// One text for most editors, one for each row of a list; for bytes, text and spelling.
void enterValue(const QWidget& dialog, const QStringList& texts)
{
    if (dialog.findChild<QListWidget*>(QStringLiteral("listValue"))) {
        for (const QString& text : texts) {
            click(button(dialog, "Add"));
            type(text);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            QTRY_COMPARE(QApplication::focusWidget(), dialog.findChild<QListWidget*>());
        }
    } else if (auto* const edit = dialog.findChild<QDateTimeEdit*>(QStringLiteral("edtValue"))) {
        edit->setFocus(Qt::TabFocusReason); // selects the first section
        type(texts.first());
        if (texts.size() > 1)
            choose(part<QComboBox>(dialog, "cbZone"), texts.last());
    } else if (auto* const box = dialog.findChild<QCheckBox*>()) {
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Space);
    } else if (dialog.findChild<QWidget*>(QStringLiteral("edtValue"))) {
        if (texts.size() > 1)
            choose(part<QComboBox>(dialog, "cbSpelling"), texts.last());
        replace(part<QWidget>(dialog, "edtValue"), texts.first());
    }
}

void enterFile(QWidget& dialog, const QString& name)
{
    dialog.activateWindow(); // a question that was open before it may have taken the keyboard
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto& edit = part<QLineEdit>(dialog, "fileNameEdit");
    replace(edit, name);
    QTest::keyClick(&edit, Qt::Key_Return);
}

QString withoutBreaks(QString text)
{
    return text.remove(QChar(0x200B));
}

} // namespace

class InputDialogsTest : public QObject
{
    Q_OBJECT

    // With a file that is mounted as "b".
    std::shared_ptr<Repository::AttributeRepository> repositoryWith(const QString& format,
                                                                    const QByteArray& content)
    {
        auto repository = Repository::AttributeRepository::create();
        const QString file = folder.filePath(QStringLiteral("file"));
        TestSupport::writeFile(file, content);
        const bool isMounted = repository->getBackendInterface()->createBackend(
            format, QStringLiteral("b"), {file, {}, FrameworkCore::AppConfig::AccessMode::ReadWrite}, 2);
        Utilities::SetAppConfigRepositoryInterface(isMounted ? repository : nullptr);
        return repository;
    }

private slots:
    void init() { QVERIFY(folder.isValid()); }

    // The dialog lets pass what the repository takes, and nothing else.
    void namesAreChecked_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("fault");
        const auto row = [](const char* name, const char* fault) {
            QTest::newRow(name) << QString::fromLatin1(name) << QString::fromLatin1(fault);
        };
        row("limit", "");
        row("limits.upper", "");
        row("with blank", "");
        row("50%25", "");
        row("", "empty");
        row(".limit", "begins with \".\"");
        row("limit.", "ends with \".\"");
        row("limits..upper", "between \"..\"");
        row("limit*", "\"*\"");
        row("a;b", "\"%3B\"");
        row("50%", "\"%25\"");
        row("5%b", "\"%25\"");
    }

    void namesAreChecked()
    {
        QFETCH(QString, name);
        QFETCH(QString, fault);
        const DialogDriver driver([&](QWidget& dialog) {
            auto& edit = part<QLineEdit>(dialog, "edtName");
            QVERIFY(edit.hasFocus());
            QVERIFY(!ok(dialog).isEnabled());
            type(QStringLiteral("x"));
            replace(edit, name);
            const QString said = part<QLabel>(dialog, "lblNameFault").text();
            QVERIFY2(fault.isEmpty() ? said.isEmpty() : said.contains(fault), qPrintable(said));
            QCOMPARE(ok(dialog).isEnabled(), fault.isEmpty());
            QTest::keyClick(&edit, Qt::Key_Return);
            QCOMPARE(dialog.isVisible(), !fault.isEmpty());
            dialog.close();
        });
        QString created;
        QVariant value;
        int valueType = -1;
        QCOMPARE(dialogs.showAttributeCreateDialog(created, value, valueType), fault.isEmpty());
        QCOMPARE(created, fault.isEmpty() ? name : QString());

        const auto repository = Repository::AttributeRepository::create();
        FrameworkCore::AppConfig::BackendConfiguration file;
        file.location = folder.filePath(QStringLiteral("names.json"));
        file.accessMode = FrameworkCore::AppConfig::AccessMode::ReadWrite;
        QVERIFY(repository->getBackendInterface()->createBackend(QStringLiteral("json"), QStringLiteral("b"),
                                                                 file, 2));
        const QString path = QStringLiteral("b.") + name;
        QCOMPARE(repository->getWriterInterface()->createAttribute(path, 1, 2, 3), fault.isEmpty());
    }

    void valuesOfEveryType_data()
    {
        TestSupport::columns<QString, QStringList, QVariant>("choice", "texts", "expected");
        const auto row = [](const char* choice, const QString& texts, const QVariant& expected) {
            QTest::addRow("%s %s", choice, qPrintable(texts))
                << QString::fromLatin1(choice) << texts.split(QLatin1Char('|')) << expected;
        };
        const auto text = [](const char* latin) { return QString::fromLatin1(latin); };
        row("Text", text(" a;b "), QStringLiteral(" a;b "));
        row("True", text("true"), true);
        row("Integer", text("-9223372036854775808"), std::numeric_limits<qlonglong>::min());
        row("Unsigned", text("18446744073709551615"), std::numeric_limits<qulonglong>::max());
        row("Real", text("1.5e-3"), 0.0015);
        row("List", text("one; two||three"), QStringList{text("one; two"), QString(), text("three")});
        row("Bytes", text("0aFF 00|Hex"), QByteArray("\x0A\xFF\x00", 3));
        row("Bytes", text("Cv8=|Base64"), QByteArray("\x0A\xFF"));
        row("Bytes", text("a\\x00b|Text"), QByteArray("a\0b", 3));
        row("Date", text("20240229"), QDate(2024, 2, 29));
        row("Time", text("235958007"), QTime(23, 59, 58, 7));
        row("Date and time", text("20240229235958007|UTC"),
            QDateTime(QDate(2024, 2, 29), QTime(23, 59, 58, 7), Qt::UTC));
        row("Date and time", text("20240229235958007|UTC+05:30"),
            QDateTime(QDate(2024, 2, 29), QTime(23, 59, 58, 7), Qt::OffsetFromUTC, 19800));
        row("No value", {}, QVariant());
    }

    void valuesOfEveryType()
    {
        QFETCH(QString, choice);
        QFETCH(QStringList, texts);
        QFETCH(QVariant, expected);
        const DialogDriver driver([&](QWidget& dialog) {
            type(QStringLiteral("new"));
            choose(part<QComboBox>(dialog, "cbType"), choice);
            enterValue(dialog, texts);
            QCOMPARE(part<QLabel>(dialog, "lblValueFault").text(), QString());
            click(ok(dialog));
        });
        QString name;
        QVariant value;
        int valueType = -1;
        QVERIFY(dialogs.showAttributeCreateDialog(name, value, valueType));
        QCOMPARE(value.userType(), expected.userType());
        QCOMPARE(valueType, expected.userType());
        QCOMPARE(value, expected);
        if (expected.userType() == QMetaType::QDateTime)
            QCOMPARE(value.toDateTime().offsetFromUtc(), expected.toDateTime().offsetFromUtc());
    }

    void faultsOfValuesAreSaid_data()
    {
        TestSupport::columns<QString, QStringList, QString>("choice", "texts", "fault");
        const auto row = [](const char* choice, const char* texts, const char* fault) {
            QTest::addRow("%s %s", choice, texts)
                << QString::fromLatin1(choice) << QString::fromLatin1(texts).split(QLatin1Char('|'))
                << QString::fromLatin1(fault);
        };
        row("Integer", "9223372036854775808", "outside of");
        row("Unsigned", "-1", "outside of");
        row("Integer", "", "missing");
        row("Real", "1,5", "not a number");
        row("Bytes", "0g|Hex", "\"g\" is not a hexadecimal digit");
        row("Bytes", "0a f|Hex", "one digit only");
        row("Bytes", "Cv8*|Base64", "not Base64");
        row("Bytes", "a\\q|Text", "\\");
    }

    void faultsOfValuesAreSaid()
    {
        QFETCH(QString, choice);
        QFETCH(QStringList, texts);
        QFETCH(QString, fault);
        const DialogDriver driver([&](QWidget& dialog) {
            type(QStringLiteral("new"));
            choose(part<QComboBox>(dialog, "cbType"), choice);
            enterValue(dialog, texts);
            auto& said = part<QLabel>(dialog, "lblValueFault");
            QVERIFY2(said.text().contains(fault), qPrintable(said.text()));
            QVERIFY(said.height() >= said.heightForWidth(said.width())); // nothing is cut
            QVERIFY(!ok(dialog).isEnabled());
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        QString name;
        QVariant value;
        int valueType = -1;
        QVERIFY(!dialogs.showAttributeCreateDialog(name, value, valueType));
        QVERIFY(name.isEmpty() && valueType == -1);
    }

    void newAttributesAreCheckedWhereTheyGo()
    {
        const auto repository = repositoryWith(QStringLiteral("json"), "{\"a\": 5, \"g\": {\"k\": 1}}");
        const DialogDriver driver([&](QWidget& dialog) {
            QCOMPARE(part<QLabel>(dialog, "lblPlace").text(), QStringLiteral("b"));
            auto& edit = part<QLineEdit>(dialog, "edtName");
            const auto say = [&](const char* name, const char* label, const QString& expected) {
                replace(edit, QLatin1String(name));
                const QString said = withoutBreaks(part<QLabel>(dialog, label).text());
                QVERIFY2(expected.isEmpty() ? said.isEmpty() : said.contains(expected), qPrintable(said));
                QCOMPARE(ok(dialog).isEnabled(), QLatin1String(label) != QLatin1String("lblNameFault"));
            };
            say("a", "lblNameFault", QStringLiteral("'b.a' already"));
            say("a.x.y", "lblRemarks", QStringLiteral("'b.a' holds a value"));
            choose(part<QComboBox>(dialog, "cbType"), QStringLiteral("Date"));
            const auto& remarks = part<QLabel>(dialog, "lblRemarks");
            QVERIFY(remarks.text().contains(QLatin1String("$types")));
            QTRY_VERIFY(remarks.height() >= remarks.heightForWidth(remarks.width())); // nothing is cut
            choose(part<QComboBox>(dialog, "cbType"), QStringLiteral("Text"));
            say("g", "lblRemarks", QStringLiteral("'b.g' is a group so far"));
            say("g.x", "lblRemarks", {});
            QVERIFY(repository->getWriterInterface()->createAttribute(QStringLiteral("b.g.x"), 1, 2, 3));
            QTest::keyClick(&edit, Qt::Key_Return);
            QVERIFY(dialog.isVisible()); // since others were faster
            say("g.x", "lblNameFault", QStringLiteral("'b.g.x' already"));
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        QString name;
        QVariant value;
        int valueType = -1;
        QVERIFY(!dialogs.showAttributeCreateDialog(name, value, valueType, QStringLiteral("b")));
        Utilities::SetAppConfigRepositoryInterface({});
    }

    // As the files show that they do.
    void typeTagsAreAnnounced_data()
    {
        QTest::addColumn<QString>("choice");
        QTest::addColumn<QString>("typed");
        const auto row = [](const char* choice, const char* typed) {
            QTest::addRow("%s %s", choice, typed)
                << QString::fromLatin1(choice) << QString::fromLatin1(typed);
        };
        row("Text", "plain");
        row("Text", "5");
        row("Text", " blank");
        row("Text", "");
        row("True", "true");
        row("Integer", "5");
        row("Unsigned", "5");
        row("Unsigned", "18446744073709551615");
        row("Real", "0.5");
        row("Real", "nan");
        row("List", "a");
        row("Bytes", "41|Hex");
        row("Date", "20240229");
        row("No value", "");
    }

    void typeTagsAreAnnounced()
    {
        QFETCH(QString, choice);
        QFETCH(QString, typed);
        for (const QString& format : words("ini json xml txt")) {
            const bool isXml = format == QLatin1String("xml");
            const auto repository = repositoryWith(format, isXml ? "<r/>" : "");
            const QString parent = isXml ? QStringLiteral("b.r") : QStringLiteral("b");
            QString remark;
            QString name;
            QVariant value;
            int valueType = -1;
            const DialogDriver driver([&](QWidget& dialog) {
                type(QStringLiteral("new"));
                choose(part<QComboBox>(dialog, "cbType"), choice);
                enterValue(dialog, typed.split(QLatin1Char('|')));
                remark = part<QLabel>(dialog, "lblRemarks").text();
                click(ok(dialog));
            });
            QVERIFY(dialogs.showAttributeCreateDialog(name, value, valueType, parent));
            const QString path = parent + QLatin1Char('.') + name;
            QVERIFY(repository->getWriterInterface()->createAttribute(path, value, 2, 3));
            QVERIFY(repository->getBackendInterface()->saveBackend(QStringLiteral("b")));
            const QByteArray text = TestSupport::contentOf(folder.filePath(QStringLiteral("file")));
            const bool isTagged =
                text.contains("@type") || text.contains("$types") || text.contains("?vantry");
            QVERIFY2(remark.isEmpty() == !isTagged, qPrintable(format + remark));
        }
        Utilities::SetAppConfigRepositoryInterface({});
    }

    void otherTypesTakeTheValueOver()
    {
        const DialogDriver driver([](QWidget& dialog) {
            type(QStringLiteral("new"));
            auto& types = part<QComboBox>(dialog, "cbType");
            enterValue(dialog, {QStringLiteral("12")});
            choose(types, QStringLiteral("Unsigned"));
            QCOMPARE(part<QLineEdit>(dialog, "edtValue").text(), QStringLiteral("12"));
            choose(types, QStringLiteral("Bytes"));
            QCOMPARE(part<QPlainTextEdit>(dialog, "edtValue").toPlainText(), QStringLiteral("31 32"));
            choose(part<QComboBox>(dialog, "cbSpelling"), QStringLiteral("Base64"));
            QCOMPARE(part<QPlainTextEdit>(dialog, "edtValue").toPlainText(), QStringLiteral("MTI="));
            click(ok(dialog));
        });
        QString name;
        QVariant value;
        int valueType = -1;
        QVERIFY(dialogs.showAttributeCreateDialog(name, value, valueType));
        QCOMPARE(value, QVariant(QByteArray("12")));
    }

    void tabGoesFromTheTypeToTheValueAndAround()
    {
        const DialogDriver driver([](QWidget& dialog) {
            type(QStringLiteral("new"));
            auto& types = part<QComboBox>(dialog, "cbType");
            for (const char* choice : {"Real", "List", "True", "Bytes", "Date and", "Text"}) {
                choose(types, QLatin1String(choice));
                QCoreApplication::processEvents(); // the layout shows the new editor
                QStringList reached;
                bool isButton = false; // what comes behind the type
                for (QWidget* at = nullptr; at != &types && reached.size() < 20;) {
                    at = at ? at : &types;
                    QTest::keyClick(at, Qt::Key_Tab);
                    at = QApplication::focusWidget();
                    isButton |= reached.isEmpty() && qobject_cast<QPushButton*>(at);
                    reached.append(at->objectName());
                }
                QVERIFY2(!isButton, choice);
                QCOMPARE(reached.mid(reached.size() - 2), words("edtName cbType"));
            }
            click(button(dialog, "Cancel"));
        });
        QString name;
        QVariant value;
        int valueType = -1;
        QVERIFY(!dialogs.showAttributeCreateDialog(name, value, valueType));
    }

    void rowsOfListsMoveAndGo()
    {
        const DialogDriver driver([](QWidget& dialog) {
            type(QStringLiteral("new"));
            choose(part<QComboBox>(dialog, "cbType"), QStringLiteral("List"));
            enterValue(dialog, {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
            click(button(dialog, "Move up"));
            auto& list = part<QListWidget>(dialog, "listValue");
            list.setFocus();
            QTest::keyClick(&list, Qt::Key_Up);
            QTest::keyClick(&list, Qt::Key_Delete);
            click(ok(dialog));
        });
        QString name;
        QVariant value;
        int valueType = -1;
        QVERIFY(dialogs.showAttributeCreateDialog(name, value, valueType));
        QCOMPARE(value.toStringList(), words("c b"));
    }

    void pasteAsksForNameAndPlace()
    {
        QString name = QStringLiteral("supply");
        bool asChild = false;
        {
            const DialogDriver driver([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
            QVERIFY(dialogs.showAttributePasteDialog({}, QStringLiteral("Attribute Name"), name, asChild));
        }
        QCOMPARE(name, QStringLiteral("supply"));
        QVERIFY(asChild);
        const DialogDriver driver([](QWidget& dialog) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace); // the name is selected
            QVERIFY(!ok(dialog).isEnabled());
            QVERIFY(!part<QLabel>(dialog, "lblNameFault").text().isEmpty());
            type(QStringLiteral("copy"));
            auto& beside = part<QRadioButton>(dialog, "radioBeside");
            QTest::mouseClick(&beside, Qt::LeftButton, {}, QPoint(5, beside.height() / 2));
            click(ok(dialog));
        });
        QVERIFY(dialogs.showAttributePasteDialog({}, QStringLiteral("Attribute Name"), name, asChild));
        QCOMPARE(name, QStringLiteral("copy"));
        QVERIFY(!asChild);
    }

    void onlyYesConfirms_data()
    {
        const auto row = TestSupport::columns<int, int>("key", "answer");
        row("Escape", int(Qt::Key_Escape), int(QMessageBox::No));
        row("Return", int(Qt::Key_Return), int(QMessageBox::No));
        row("Y", int(Qt::Key_Y), 16384);
    }

    void onlyYesConfirms()
    {
        QFETCH(int, key);
        const QString path = QStringLiteral("component.").repeated(40) + QString(300, QLatin1Char('x'));
        const DialogDriver driver([&](QWidget& dialog) {
            auto* const box = qobject_cast<QMessageBox*>(&dialog);
            QCOMPARE(box->text(), QStringLiteral("Sure?"));
            QCOMPARE(withoutBreaks(box->informativeText()), path);
            QVERIFY(box->width() < 800);
            QTest::keyClick(box, Qt::Key(key), key == Qt::Key_Y ? Qt::AltModifier : Qt::NoModifier);
        });
        QTEST(dialogs.showConfirmationDialog(QStringLiteral("Sure?"), path), "answer");
    }

    void singleText()
    {
        bool accepted = false;
        {
            const DialogDriver driver([](QWidget& dialog) {
                type(QStringLiteral("a.b")); // over the preset, which is selected
                QTest::keyClick(&dialog, Qt::Key_Return);
            });
            QCOMPARE(dialogs.showSingleTextDialog({}, QStringLiteral("Import Path"), QStringLiteral("old"),
                                                  accepted),
                     QStringLiteral("a.b"));
        }
        QVERIFY(accepted);
        const DialogDriver driver([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
        QCOMPARE(dialogs.showSingleTextDialog({}, {}, QStringLiteral("old"), accepted), QString());
        QVERIFY(!accepted);
    }

    void savedNamesStayAsTyped()
    {
        for (const char* const filter : {"Json", "Test"}) {
            for (const QString& name : words("out out.TXT")) {
                const DialogDriver driver([&](QWidget& dialog) {
                    choose(part<QComboBox>(dialog, "fileTypeCombo"), QLatin1String(filter));
                    enterFile(dialog, name);
                });
                QCOMPARE(dialogs.showSaveAsDialog(QStringLiteral("Save As"), folder.path(), exportFilter),
                         folder.filePath(name));
            }
        }
    }

    void overwritingIsAskedAboutAndTheFolderRemembered()
    {
        QFile existing(folder.filePath(QStringLiteral("there.json")));
        QVERIFY(existing.open(QIODevice::WriteOnly));
        existing.close();
        {
            const DialogDriver driver([](QWidget& dialog) {
                const DialogDriver question([](QWidget& box) {
                    QVERIFY(qobject_cast<QMessageBox*>(&box));
                    QTest::keyClick(&box, Qt::Key_Escape);
                });
                enterFile(dialog, QStringLiteral("there.json"));
                QVERIFY(dialog.isVisible());
                enterFile(dialog, QStringLiteral("other"));
            });
            QCOMPARE(dialogs.showSaveAsDialog({}, folder.path(), exportFilter),
                     folder.filePath(QStringLiteral("other")));
        }
        const DialogDriver driver([](QWidget& dialog) { enterFile(dialog, QStringLiteral("there.json")); });
        QCOMPARE(dialogs.showFileOpenDialog({}, {}, QStringLiteral("Json File (*.json)")),
                 existing.fileName());
    }

    void theParentMayGoFirst()
    {
        auto parent = std::make_unique<QWidget>();
        const AttributeTreeModelInputDialogs ofParent(parent.get());
        QCOMPARE(ofParent.getParentWidget(), parent.get());
        QString name;
        QVariant value;
        int valueType = -1;
        {
            const DialogDriver driver([&](QWidget& dialog) {
                QCOMPARE(dialog.parentWidget(), parent.get());
                type(QStringLiteral("new"));
                parent.reset();
            });
            QVERIFY(!ofParent.showAttributeCreateDialog(name, value, valueType));
        }
        QVERIFY(!ofParent.getParentWidget());
        const DialogDriver driver([](QWidget& box) {
            QCOMPARE(qobject_cast<QMessageBox*>(&box)->text(), QStringLiteral("<b>wrong</b>"));
            QTest::keyClick(&box, Qt::Key_Return);
        });
        AttributeTreeModelInputDialogs::ShowWarningMessage(ofParent.getParentWidget(), {},
                                                           QStringLiteral("<b>wrong</b>"));
    }

private:
    const QString exportFilter = QStringLiteral("Json File(*.json);;Test File(*.txt)");
    QTemporaryDir folder;
    AttributeTreeModelInputDialogs dialogs{nullptr};
};

int main(int argc, char** argv)
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // those of a desktop take no events from a test
    return TestSupport::runTest<QApplication, InputDialogsTest>(argc, argv);
}

#include "input_dialogs_test.moc"
