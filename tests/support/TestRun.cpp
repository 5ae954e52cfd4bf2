#include "tests/support/TestRun.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <atomic>
#include <cstdio>

namespace TestSupport {

namespace {

std::atomic<int> unannouncedWarnings{0};
QtMessageHandler qtTestHandler = nullptr;

// Qt Test installs its own handler for the length of a run and calls none before it, so this one stands
// behind: it hears what Qt Test did not take as announced.
void countWarning(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        ++unannouncedWarnings;
        std::fprintf(stderr, "UNANNOUNCED WARNING: %s\n", qPrintable(message));
    }
    if (qtTestHandler)
        qtTestHandler(type, context, message);
}

} // namespace

void isolate()
{
    QStandardPaths::setTestModeEnabled(true);
    // Qt warns where there is none, as in a container.
    static const QTemporaryDir runtimeFolder;
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtimeFolder.path()));
    qtTestHandler = qInstallMessageHandler(countWarning);
}

int finish(int testResult)
{
    const int warnings = unannouncedWarnings;
    if (warnings > 0)
        std::fprintf(stderr, "FAIL: %d unannounced warnings\n", warnings);
    return testResult != 0 ? testResult : warnings;
}

QString projectPath(const QString& name)
{
    return QDir(QStringLiteral(VANTRY_SOURCE_DIR)).absoluteFilePath(name);
}

QString corporaPath(const QString& name)
{
    const QString folder =
        qEnvironmentVariable("VANTRY_CORPORA", projectPath(QStringLiteral("../shared/corpora")));
    const QFileInfo found(QDir(folder).filePath(name));
    return found.exists() ? found.canonicalFilePath() : QString();
}

} // namespace TestSupport
