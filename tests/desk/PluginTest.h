#pragma once

#include "tests/support/TestRun.h"

#include <QCoreApplication>
#include <QDir>
#include <QSettings>
#include <QTemporaryDir>

#include <memory>

// Tests of plug-ins: each has a folder for them, and settings of its own.
class PluginTest : public QObject
{
protected:
    void makeFolder()
    {
        folder = std::make_unique<QTemporaryDir>();
        QVERIFY(folder->isValid());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, inFolder("settings"));
        QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("plugins")));
        plugins = inFolder("plugins");
    }

    QString inFolder(const char* name) const { return folder->filePath(QLatin1String(name)); }

    static inline const QString desk = QStringLiteral(VANTRY_DESK);
    static inline const QString goodPlugin = QStringLiteral(VANTRY_MODULE);
    std::unique_ptr<QTemporaryDir> folder;
    QString plugins;
};

// As the program names itself, so that both have the same settings.
template <typename Application, typename Test>
int runPluginTest(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Vantry"));
    QCoreApplication::setApplicationName(QStringLiteral("vantry-desk"));
    return TestSupport::runTest<Application, Test>(argc, argv);
}
