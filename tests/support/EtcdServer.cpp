#include "tests/support/EtcdServer.h"

#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>

#include <array>
#include <csignal>
#include <sys/prctl.h>

namespace TestSupport {

namespace {

constexpr int startAttempts = 3;
constexpr int startMilliseconds = 30'000;
constexpr int pollMilliseconds = 30;
constexpr int answerMilliseconds = 2000;

// Ends with whoever started it, however that ended.
class DependentProcess : public QProcess
{
protected:
    void setupChildProcess() override { ::prctl(PR_SET_PDEATHSIG, SIGKILL); }
};

QString urlOf(const QString& scheme, quint16 port)
{
    return QStringLiteral("%1://127.0.0.1:%2").arg(scheme).arg(port);
}

} // namespace

QString EtcdServer::findObstacle()
{
    for (const char* program : {"etcd", "etcdctl"}) {
        if (QStandardPaths::findExecutable(QLatin1String(program)).isEmpty())
            return QStringLiteral("%1 is not installed (Debian: etcd-server, etcd-client)")
                .arg(QLatin1String(program));
    }
    return {};
}

EtcdServer::EtcdServer(const Options& chosen) : options(chosen)
{
    if (options.usesTls)
        certificates = std::make_unique<TestCertificates>();
    for (int number = 1; number <= options.members; ++number) {
        members.emplace_back();
        members.back().name = QStringLiteral("n%1").arg(number);
    }
}

EtcdServer::~EtcdServer()
{
    for (int member = 0; member < getMemberCount(); ++member)
        kill(member);
}

bool EtcdServer::start()
{
    if (certificates && !certificates->getFailure().isEmpty()) {
        failure = certificates->getFailure();
        return false;
    }
    // Another program may take a port before etcd does.
    for (int attempt = 0; attempt < startAttempts; ++attempt) {
        choosePorts();
        if (wipe())
            return true;
    }
    return false;
}

// All are held until all are known, or one could be given twice.
void EtcdServer::choosePorts()
{
    std::vector<std::unique_ptr<QTcpServer>> holders;
    const auto choose = [&holders] {
        holders.push_back(std::make_unique<QTcpServer>());
        holders.back()->listen(QHostAddress::LocalHost);
        return holders.back()->serverPort();
    };
    for (Member& member : members) {
        member.clientPort = choose();
        member.hiddenPort = choose();
        member.peerPort = choose();
        member.healthPort = choose();
    }
}

QString EtcdServer::scheme() const
{
    return options.usesTls ? QStringLiteral("https") : QStringLiteral("http");
}

QStringList EtcdServer::argumentsOf(const Member& member) const
{
    QStringList cluster;
    for (const Member& each : members)
        cluster.append(each.name + QLatin1Char('=') + urlOf(QStringLiteral("http"), each.peerPort));
    const QString client = urlOf(scheme(), member.port());
    const QString peer = urlOf(QStringLiteral("http"), member.peerPort);
    QStringList arguments{QStringLiteral("--name"),
                          member.name,
                          QStringLiteral("--data-dir"),
                          folderOf(member),
                          QStringLiteral("--listen-client-urls"),
                          client,
                          QStringLiteral("--advertise-client-urls"),
                          client,
                          QStringLiteral("--listen-peer-urls"),
                          peer,
                          QStringLiteral("--initial-advertise-peer-urls"),
                          peer,
                          QStringLiteral("--listen-metrics-urls"),
                          urlOf(QStringLiteral("http"), member.healthPort),
                          QStringLiteral("--initial-cluster"),
                          cluster.join(QLatin1Char(',')),
                          QStringLiteral("--initial-cluster-state"),
                          QStringLiteral("new"),
                          QStringLiteral("--auth-token-ttl"),
                          QString::number(options.tokenSeconds),
                          QStringLiteral("--logger"),
                          QStringLiteral("zap"),
                          QStringLiteral("--log-level"),
                          QStringLiteral("error")};
    if (certificates)
        arguments += {QStringLiteral("--cert-file"), certificates->certificateOf(QStringLiteral("server")),
                      QStringLiteral("--key-file"), certificates->keyOf(QStringLiteral("server"))};
    if (options.asksForCertificates)
        arguments += {QStringLiteral("--client-cert-auth"), QStringLiteral("--trusted-ca-file"),
                      certificates->authority()};
    return arguments + options.arguments;
}

void EtcdServer::launch(Member& member)
{
    member.process = std::make_unique<DependentProcess>();
    member.process->setProcessChannelMode(QProcess::MergedChannels);
    member.process->start(QStringLiteral("etcd"), argumentsOf(member));
    member.process->waitForStarted();
}

QStringList EtcdServer::getEndpoints() const
{
    QStringList endpoints;
    for (const Member& member : members)
        endpoints.append(QStringLiteral("127.0.0.1:%1").arg(member.port()));
    return endpoints;
}

QString EtcdServer::getLocation(const QString& store, const QString& query) const
{
    QStringList addresses;
    for (const Member& member : members)
        addresses.append(QStringLiteral("127.0.0.1:%1").arg(member.clientPort));
    QStringList parameters;
    if (certificates)
        parameters.append(QStringLiteral("ca=") + certificates->authority());
    if (!query.isEmpty())
        parameters.append(query);
    return QStringLiteral("%1://%2/%3%4%5")
        .arg(certificates ? QStringLiteral("etcds") : QStringLiteral("etcd"),
             addresses.join(QLatin1Char(',')), store, parameters.isEmpty() ? QString() : QStringLiteral("?"),
             parameters.join(QLatin1Char('&')));
}

void EtcdServer::kill(int member)
{
    auto& process = members.at(std::size_t(member)).process;
    if (!process)
        return;
    process->kill();
    process->waitForFinished();
    process.reset();
}

bool EtcdServer::restart(int member, Place place)
{
    Member& restarted = members.at(std::size_t(member));
    restarted.place = place;
    launch(restarted);
    return waitUntilReady(restarted);
}

void EtcdServer::freeze(int member)
{
    ::kill(pid_t(members.at(std::size_t(member)).process->processId()), SIGSTOP);
}

void EtcdServer::thaw(int member)
{
    ::kill(pid_t(members.at(std::size_t(member)).process->processId()), SIGCONT);
}

bool EtcdServer::wipe(Place place)
{
    for (int member = 0; member < getMemberCount(); ++member)
        kill(member);
    for (Member& member : members) {
        QDir(folderOf(member)).removeRecursively();
        member.place = place;
        launch(member);
    }
    rootPassword.clear();
    for (const Member& member : members) {
        if (!waitUntilReady(member))
            return false;
    }
    return true;
}

bool EtcdServer::isReady(int member) const
{
    return isHealthy(members.at(std::size_t(member)));
}

bool EtcdServer::waitUntilReady(int member)
{
    return waitUntilReady(members.at(std::size_t(member)));
}

bool EtcdServer::isHealthy(const Member& member)
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress(QHostAddress::LocalHost), member.healthPort);
    if (!socket.waitForConnected(answerMilliseconds))
        return false;
    socket.write("GET /health HTTP/1.0\r\n\r\n");
    while (socket.waitForReadyRead(answerMilliseconds)) {
    }
    return socket.readAll().contains("\"health\":\"true\"");
}

// The pause between two looks ends at once when the server does.
bool EtcdServer::waitUntilReady(const Member& member)
{
    QElapsedTimer waited;
    waited.start();
    while (!isHealthy(member)) {
        const bool hasEnded = member.process->waitForFinished(pollMilliseconds) ||
                              member.process->state() == QProcess::NotRunning;
        if (hasEnded || waited.hasExpired(startMilliseconds)) {
            failure = QStringLiteral("etcd %1: %2")
                          .arg(hasEnded ? QStringLiteral("ended") : QStringLiteral("is not ready"),
                               QString::fromUtf8(member.process->readAll().right(2000)));
            return false;
        }
    }
    return true;
}

int EtcdServer::findLeader() const
{
    const auto statuses =
        QJsonDocument::fromJson(control({QStringLiteral("endpoint"), QStringLiteral("status"),
                                         QStringLiteral("-w"), QStringLiteral("json")}))
            .array();
    for (const auto& each : statuses) {
        const QJsonObject status = each.toObject().value(QLatin1String("Status")).toObject();
        const QJsonObject header = status.value(QLatin1String("header")).toObject();
        if (header.value(QLatin1String("member_id")) != status.value(QLatin1String("leader")))
            continue;
        const QString endpoint = each.toObject().value(QLatin1String("Endpoint")).toString();
        return getEndpoints().indexOf(endpoint.mid(endpoint.lastIndexOf(QLatin1Char('/')) + 1));
    }
    return -1;
}

QByteArray EtcdServer::control(const QStringList& arguments) const
{
    QStringList endpoints;
    for (const Member& member : members)
        endpoints.append(urlOf(scheme(), member.port()));
    QStringList all{QStringLiteral("--endpoints"), endpoints.join(QLatin1Char(','))};
    if (certificates)
        all += {QStringLiteral("--cacert"), certificates->authority(),
                QStringLiteral("--cert"),   certificates->certificateOf(QStringLiteral("client")),
                QStringLiteral("--key"),    certificates->keyOf(QStringLiteral("client"))};
    if (!rootPassword.isEmpty())
        all += {QStringLiteral("--user"), QStringLiteral("root:") + rootPassword};
    QProcess etcdctl;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("ETCDCTL_API"), QStringLiteral("3"));
    etcdctl.setProcessEnvironment(environment);
    etcdctl.start(QStringLiteral("etcdctl"), all + arguments);
    etcdctl.waitForFinished();
    const QByteArray output = etcdctl.readAllStandardOutput();
    return etcdctl.exitCode() == 0 || !output.isEmpty() ? output : etcdctl.readAllStandardError();
}

bool EtcdServer::requireUsers()
{
    const QString root = QStringLiteral("root");
    const QString password = QStringLiteral("of-root");
    control({QStringLiteral("user"), QStringLiteral("add"), root + QLatin1Char(':') + password});
    control({QStringLiteral("user"), QStringLiteral("grant-role"), root, root});
    if (!control({QStringLiteral("auth"), QStringLiteral("enable")}).contains("Authentication Enabled"))
        return false;
    rootPassword = password;
    return true;
}

bool EtcdServer::addUser(const QString& name, const QString& password, const QString& prefix)
{
    control({QStringLiteral("role"), QStringLiteral("add"), name});
    control({QStringLiteral("role"), QStringLiteral("grant-permission"), name,
             QStringLiteral("--prefix=true"), QStringLiteral("readwrite"), prefix});
    control({QStringLiteral("user"), QStringLiteral("add"), name + QLatin1Char(':') + password});
    return control({QStringLiteral("user"), QStringLiteral("grant-role"), name, name}).contains("granted");
}

bool EtcdServer::compact(qint64 revision) const
{
    return control({QStringLiteral("compact"), QString::number(revision), QStringLiteral("--physical=true")})
        .contains("compacted");
}

} // namespace TestSupport
