#pragma once

#include "tests/support/TestCertificates.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>
#include <vector>

class QProcess;

namespace TestSupport {

// A real etcd, of one member or several, on free ports of the loopback. It, and what it has stored, goes with
// this, also when the test crashes. Operations return once the servers are as they promise. One thread, which
// needs no event loop.
class EtcdServer
{
public:
    struct Options
    {
        int members = 1;
        bool usesTls = false;
        bool asksForCertificates = false; // of clients, with TLS
        int tokenSeconds = 300;           // how long a token lasts that is not used
        QStringList arguments = {};       // more of them
    };

    // Why there can be none, for QSKIP; empty where etcd and its command line are installed.
    static QString findObstacle();

    EtcdServer() : EtcdServer(Options()) {}
    explicit EtcdServer(const Options& options);
    ~EtcdServer();
    Q_DISABLE_COPY(EtcdServer)

    // Starts all members. False, and getFailure says why, when they do not become ready.
    bool start();
    QString getFailure() const { return failure; }

    int getMemberCount() const { return int(members.size()); }
    QStringList getEndpoints() const; // 127.0.0.1:port of each member, where it is now
    const TestCertificates* getCertificates() const { return certificates.get(); }

    // "etcd://127.0.0.1:port,.../store", with "etcds" and the authority where TLS is used; the query without
    // "?".
    QString getLocation(const QString& store, const QString& query = {}) const;

    // Hidden, a member is at another port, so that those who know the location do not reach it.
    enum class Place { Usual, Hidden };

    // Ends a member at once, as a power cut does; what it has stored stays. Brings it back, and waits until
    // it is ready.
    void kill(int member = 0);
    bool restart(int member = 0, Place place = Place::Usual);

    // Stops a member in the middle of what it does: its connections stay and are silent.
    void freeze(int member = 0);
    void thaw(int member = 0);

    // Kills all members and starts them again with nothing stored.
    bool wipe(Place place = Place::Usual);

    // Whether the member can write, which needs a majority.
    bool isReady(int member = 0) const;
    bool waitUntilReady(int member = 0);

    int findLeader() const; // -1 for none

    // What etcdctl prints, or how it failed; as root once there are users.
    QByteArray control(const QStringList& arguments) const;

    // Makes the user root and asks everybody for a user from now on.
    bool requireUsers();
    // A user who may read and write the keys that begin so.
    bool addUser(const QString& name, const QString& password, const QString& prefix);

    // Forgets what was before the revision.
    bool compact(qint64 revision) const;

private:
    struct Member
    {
        QString name;
        quint16 clientPort = 0;
        quint16 hiddenPort = 0;
        quint16 peerPort = 0;
        quint16 healthPort = 0;
        Place place = Place::Usual;
        std::unique_ptr<QProcess> process;

        quint16 port() const { return place == Place::Usual ? clientPort : hiddenPort; }
    };

    void choosePorts();
    QStringList argumentsOf(const Member& member) const;
    void launch(Member& member);
    bool waitUntilReady(const Member& member);
    static bool isHealthy(const Member& member);
    QString folderOf(const Member& member) const { return data.filePath(member.name); }
    QString scheme() const;

    const Options options;
    QTemporaryDir data;
    std::unique_ptr<TestCertificates> certificates; // null without TLS
    std::vector<Member> members;
    QString rootPassword; // empty while there are no users
    QString failure;
};

} // namespace TestSupport
