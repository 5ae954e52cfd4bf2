#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QRandomGenerator>
#include <QStringList>

#include <map>
#include <memory>

// A backend that one thread alone uses, beside a model of its attributes and of its file. One thread.
class OwnFile
{
public:
    using RepositoryInterface = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    OwnFile(std::shared_ptr<RepositoryInterface> repository, QString name, QString type, QString filePath,
            QRandomGenerator& random);

    void step();

    // Saves, and compares with what another repository reads from the file; the faults that were found.
    QStringList finish();

private:
    using Values = std::map<QString, qlonglong>;

    QString anyPath();
    void expect(bool isAsExpected, const char* operation);
    bool mount(RepositoryInterface& into) const;
    Values read(RepositoryInterface& from) const;
    void write();
    void remove();
    void openAgain();

    const std::shared_ptr<RepositoryInterface> repository;
    const QString name;
    const QString type;
    const QString filePath;
    QRandomGenerator& random;
    qlonglong lastValue = 0;
    Values values;
    Values saved;
    QStringList faults;
};
