#pragma once

#include <QRegularExpression>
#include <QString>
#include <QtTest>

namespace TestSupport {

// Makes every warning that a test did not announce by QTest::ignoreMessage fail the run, and keeps the run
// away from the person's own settings. Called by runTest.
void isolate();

// The result of a run: that of the test, or a failure when unannounced warnings were seen.
int finish(int testResult);

// What main of a test does; VANTRY_TEST_MAIN is all of it. Tests of widgets name QApplication.
template <typename Application, typename Test>
int runTest(int argc, char** argv)
{
    isolate();
    Application application(argc, argv);
    Test test;
    return finish(QTest::qExec(&test, argc, argv));
}

#define VANTRY_TEST_MAIN(Application, Test)                                                                  \
    int main(int argc, char** argv)                                                                          \
    {                                                                                                        \
        return TestSupport::runTest<Application, Test>(argc, argv);                                          \
    }

// A file or folder of the project's own sources.
QString projectPath(const QString& name);

// Path of a file or folder of the corpora of real configuration files, which VANTRY_CORPORA names or which
// lie beside the checkout; empty when they are not on this machine.
QString corporaPath(const QString& name);

} // namespace TestSupport
