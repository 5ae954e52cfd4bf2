#include "tests/support/TestCertificates.h"

#include "tests/support/TestFiles.h"

#include <QProcess>

namespace TestSupport {

namespace {

const QString days = QStringLiteral("2");

} // namespace

TestCertificates::TestCertificates()
{
    makeAuthority();
    makeCertificate(QStringLiteral("server"), QStringLiteral("/O=server"));
    makeCertificate(QStringLiteral("client"), QStringLiteral("/O=client"));
    makeCertificate(QStringLiteral("desk"), QStringLiteral("/CN=desk"));
}

void TestCertificates::makeAuthority()
{
    run({QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"), QStringLiteral("ec"),
         QStringLiteral("-pkeyopt"), QStringLiteral("ec_paramgen_curve:prime256v1"), QStringLiteral("-nodes"),
         QStringLiteral("-keyout"), keyOf(QStringLiteral("ca")), QStringLiteral("-out"), authority(),
         QStringLiteral("-days"), days, QStringLiteral("-subj"), QStringLiteral("/CN=authority of a test")});
}

void TestCertificates::makeCertificate(const QString& name, const QString& subject)
{
    const QString request = folder.filePath(name + QStringLiteral(".csr"));
    const QString extensions = writeFile(folder.filePath(name + QStringLiteral(".ext")),
                                         "subjectAltName=IP:127.0.0.1,DNS:localhost\n"
                                         "extendedKeyUsage=serverAuth,clientAuth\n");
    run({QStringLiteral("req"), QStringLiteral("-newkey"), QStringLiteral("ec"), QStringLiteral("-pkeyopt"),
         QStringLiteral("ec_paramgen_curve:prime256v1"), QStringLiteral("-nodes"), QStringLiteral("-keyout"),
         keyOf(name), QStringLiteral("-out"), request, QStringLiteral("-subj"), subject});
    run({QStringLiteral("x509"), QStringLiteral("-req"), QStringLiteral("-in"), request,
         QStringLiteral("-CA"), authority(), QStringLiteral("-CAkey"), keyOf(QStringLiteral("ca")),
         QStringLiteral("-CAcreateserial"), QStringLiteral("-out"), certificateOf(name),
         QStringLiteral("-days"), days, QStringLiteral("-extfile"), extensions});
}

void TestCertificates::run(const QStringList& arguments)
{
    if (!failure.isEmpty())
        return;
    QProcess openssl;
    openssl.setProcessChannelMode(QProcess::MergedChannels);
    openssl.start(QStringLiteral("openssl"), arguments);
    if (!openssl.waitForFinished() || openssl.exitCode() != 0)
        failure = QStringLiteral("openssl %1: %2%3")
                      .arg(arguments.first(), openssl.errorString(), QString::fromUtf8(openssl.readAll()));
}

} // namespace TestSupport
