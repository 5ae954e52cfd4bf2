#include "tests/support/BothRepositories.h"

#include "host/Utilities/RepositoryAccess.h"
#include "repository/AttributeRepository.h"

#include <QtTest>

namespace TestSupport {

void BothRepositories::initTestCase_data()
{
    QTest::addColumn<bool>("isReal");
    QTest::newRow("fake") << false;
    QTest::newRow("real") << true;
}

void BothRepositories::init()
{
    QFETCH_GLOBAL(bool, isReal);
    fake = isReal ? nullptr : std::make_shared<FakeRepository>();
    repository = fake;
    if (isReal)
        repository = Repository::AttributeRepository::create();
    Utilities::SetAppConfigRepositoryInterface(repository);
}

void BothRepositories::cleanup()
{
    closeAll();
    Utilities::SetAppConfigRepositoryInterface({});
    fake.reset();
    repository.reset();
}

} // namespace TestSupport
