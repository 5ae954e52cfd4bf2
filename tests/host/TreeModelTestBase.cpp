#include "tests/host/TreeModelTestBase.h"

#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"
#include "tests/support/ModelText.h"

#include <QtTest>

using namespace FrameworkCore::AppConfig;

void TreeModelTestBase::create(const QString& path, const QVariant& value, AccessMode access) const
{
    QVERIFY(repository->getWriterInterface()->createAttribute(path, value, 3, int(access)));
}

void TreeModelTestBase::remove(const QString& path) const
{
    QVERIFY(repository->getTreeInterface()->removeTree(path).ok());
}

bool TreeModelTestBase::mount(const QString& name) const
{
    BackendConfiguration configuration;
    configuration.location = folder.filePath(name + text(".json"));
    configuration.description = text("of a test");
    configuration.accessMode = AccessMode::ReadWrite;
    return repository->getBackendInterface()->createBackend(text("json"), name, configuration, 2);
}

QStringList TreeModelTestBase::freshText(const QString& searchPath, int depth)
{
    Utilities::ModelViews::AttributeTreeViewModel fresh;
    fresh.resetModel(searchPath);
    return TestSupport::modelText(fresh, {}, depth);
}
