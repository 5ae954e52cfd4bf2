#pragma once

#include "tests/support/FakeRepository.h"

#include <QObject>

#include <memory>

namespace TestSupport {

// Tests that each run twice, on the fake repository and on the real one, which is the process's meanwhile.
class BothRepositories : public QObject
{
    Q_OBJECT

protected:
    virtual void closeAll() {} // after each test, before its repository goes

    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository;
    std::shared_ptr<FakeRepository> fake; // empty while the real one is used

private slots:
    void initTestCase_data();
    void init();
    void cleanup();
};

} // namespace TestSupport
