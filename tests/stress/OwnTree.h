#pragma once

#include "host/FrameworkCore/AppConfig/PathPattern.h"
#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QRandomGenerator>
#include <QStringList>

#include <atomic>
#include <map>
#include <memory>
#include <vector>

// A part of the tree, in memory, that one thread alone changes, beside a model of it: each operation must end
// as the model says, and each registration must hear exactly what happened. One thread.
class OwnTree
{
public:
    using RepositoryInterface = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    OwnTree(std::shared_ptr<RepositoryInterface> repository, QString root, QRandomGenerator& random);
    ~OwnTree();
    Q_DISABLE_COPY(OwnTree)

    void step();

    // Ends all registrations and compares for the last time; the faults that were found.
    QStringList finish();

private:
    using Values = std::map<QString, qlonglong>;

    struct Listener
    {
        FrameworkCore::AppConfig::PathPattern pattern;
        std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RegistrationInterface> registration;
        std::shared_ptr<std::atomic<int>> calls;
        int expectedCalls = 0;
    };

    QString anyPath();
    bool isNode(const QString& path) const;
    QStringList attributesWithin(const QString& path) const;
    void expect(bool isAsExpected, const char* operation, const QString& path);
    void expectCalls(const QStringList& paths);

    void create();
    void write();
    void read();
    void remove();
    void transfer(bool isMove);
    void listen();
    void endListening();
    void compare();

    const std::shared_ptr<RepositoryInterface> repository;
    const QString root;
    QRandomGenerator& random;
    qlonglong lastValue = 0;
    Values values;
    std::vector<Listener> listeners;
    QStringList faults;

    // What one who listens to everything here knows.
    Values heard;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RegistrationInterface> follower;
};
