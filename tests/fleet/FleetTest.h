#pragma once

#include "tests/fleet/FleetMachine.h"
#include "tests/support/EtcdClient.h"
#include "tests/support/EtcdServer.h"
#include "tests/support/TestRun.h"

#include <QObject>

// Tests on a real server that all of them share, each with a store of its own.
class FleetTest : public QObject
{
    Q_OBJECT

protected:
    using AccessMode = FleetMachine::AccessMode;
    using EtcdClient = TestSupport::EtcdClient;
    using EtcdServer = TestSupport::EtcdServer;
    using Outcome = FleetMachine::Outcome;

    static constexpr int longWait = 20000; // milliseconds, for servers that come back, and leases that end

    explicit FleetTest(const EtcdServer::Options& options = {}) : server(options) {}

    QString location(const QString& query = {}) const { return server.getLocation(store, query); }

    // What the keys of the store's attributes begin with, and the key of one, relative to the mount.
    std::string prefix() const { return "vantry/1/" + store.toStdString() + "/a/"; }
    std::string keyOf(const char* path) const { return prefix() + path; }

    // What a value holds, as json has it.
    static QVariant valueOf(const std::string& stored);
    static QVariant valueOf(const EtcdClient::Change& change) { return valueOf(change.value); }

    // Another program.
    const EtcdClient& outside() const { return *client; }

    EtcdServer server;
    QString store;
    std::unique_ptr<EtcdClient> client;

protected slots:
    void initTestCase();
    void init();
};

// "" when it succeeded, or else why not, for QCOMPARE.
inline QString refusalOf(const FrameworkCore::AppConfig::Outcome& outcome)
{
    return outcome.ok() ? QString() : outcome.toText();
}
