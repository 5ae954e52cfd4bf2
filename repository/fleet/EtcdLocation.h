#pragma once

#include "repository/fleet/StoreTransport.h"

#include <QString>

namespace Repository {

// Where a store is: etcd://HOST:PORT[,HOST:PORT...]/NAME, or etcds:// with TLS. After a "?" come, joined by
// "&", user, ca, cert and key (files in PEM form), credentials (a file for the user alone, with lines
// NAME=VALUE of these and of password), and offline=queue or offline=refuse. A password is never a part of
// it. Immutable.
class EtcdLocation
{
public:
    explicit EtcdLocation(const QString& location);

    // Whether a text is to be such a location.
    static bool isMeant(const QString& text);

    // What is wrong with it, for a person; empty when nothing is.
    const QString& getError() const { return error; }

    // As it was given, without what may be secret in it.
    const QString& toText() const { return text; }

    // The name of the store; its keys begin with getPrefix.
    const QString& getStore() const { return store; }
    std::string getPrefix() const;

    // Whether edits are kept while the store is away, instead of refused.
    bool isQueueing() const { return queues; }

    // With what its files hold. Why one of them cannot be used, for a person; empty when all can.
    QString read(StoreSettings& settings) const;

private:
    void readEndpoints(const QString& list);
    void readOption(const QString& name, const QString& value);
    QString readCredentials(StoreSettings& settings) const;

    QString text;
    QString error;
    QString store;
    QString user;
    QString credentials;
    QString authority;
    QString certificate;
    QString key;
    std::vector<std::string> endpoints;
    bool usesTls = false;
    bool queues = false;
};

} // namespace Repository
