#include "desk/DeskApplication.h"
#include "tests/support/LoggedFailures.h"
#include "tests/support/TestRun.h"

#include <QPushButton>

#include <new>
#include <stdexcept>

class DeskApplicationTest : public QObject
{
    Q_OBJECT

private slots:
    // What a click, a timer or a posted call throws ends nothing but itself.
    void goesOnAfterWhatAnEventThrows()
    {
        const TestSupport::LoggedFailures failures;
        QPushButton button;
        int answers = 0;
        connect(&button, &QPushButton::clicked, this, [&answers] {
            ++answers;
            throw std::bad_alloc();
        });
        button.show();
        QTest::mouseClick(&button, Qt::LeftButton);
        QTest::mouseClick(&button, Qt::LeftButton);
        QCOMPARE(answers, 2);
        QTimer::singleShot(0, this, [] { throw std::runtime_error("the timer's reason"); });
        QMetaObject::invokeMethod(
            this, [] { throw 1; }, Qt::QueuedConnection);
        QTRY_COMPARE(failures.texts().size(), 4);
        const QStringList texts = failures.texts();
        QVERIFY(texts[0].contains(QLatin1String("not enough memory")));
        QVERIFY(texts[1].contains(QLatin1String("not enough memory")));
        QCOMPARE(texts.filter(QStringLiteral("the timer's reason")).size(), 1);
        QCOMPARE(texts.filter(QStringLiteral("unknown reason")).size(), 1);
    }
};

int main(int argc, char** argv)
{
    return TestSupport::runTest<Vantry::DeskApplication, DeskApplicationTest>(argc, argv);
}

#include "desk_application_test.moc"
