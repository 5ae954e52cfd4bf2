#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace TestSupport {

// An authority of its own and certificates of a "server" on 127.0.0.1, of a "client", and of one that names
// the user "desk", made by openssl in a folder that goes with this.
class TestCertificates
{
public:
    TestCertificates();

    QString getFailure() const { return failure; } // empty when all of them could be made

    QString authority() const { return folder.filePath(QStringLiteral("ca.pem")); }
    QString certificateOf(const QString& name) const
    {
        return folder.filePath(name + QStringLiteral(".pem"));
    }
    QString keyOf(const QString& name) const { return folder.filePath(name + QStringLiteral(".key")); }

private:
    void makeAuthority();
    void makeCertificate(const QString& name, const QString& subject);
    void run(const QStringList& arguments);

    QTemporaryDir folder;
    QString failure;
};

} // namespace TestSupport
