#pragma once

#include "tests/support/BothRepositories.h"
#include "tests/support/TestFiles.h"
#include "tests/widgets/BrowserPage.h"

#include <QTemporaryDir>

// Tests of the browser page, and what they need in the repository.
class BrowserPageTest : public TestSupport::BothRepositories
{
protected:
    void closeAll() override { page.reset(); }

    void createOne(const QString& path, const QVariant& value)
    {
        QVERIFY(repository->getWriterInterface()->createAttribute(path, value, 2, 3));
    }

    void create(const QStringList& paths)
    {
        for (const QString& path : paths)
            createOne(path, path);
    }

    void createBackend(const QString& name, const QString& description)
    {
        const QString file =
            TestSupport::writeFile(folder.filePath(name + QLatin1String(".ini")), "[speed]\nvalue = 5\n");
        QVERIFY(repository->getBackendInterface()->createBackend(
            QStringLiteral("ini"), name, {file, description, FrameworkCore::AppConfig::AccessMode::ReadWrite},
            2));
    }

    void openPage()
    {
        page = std::make_unique<BrowserPage>();
        page->widget.show();
    }

    QTemporaryDir folder;
    std::unique_ptr<BrowserPage> page;
};
