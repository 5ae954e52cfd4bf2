#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QRandomGenerator>
#include <QString>
#include <QStringList>

#include <memory>

namespace TestSupport {

// Changes a repository at random, the same way for the same seed: creates, writes and removes attributes and
// subtrees below one node. One thread.
class TreeWriter
{
public:
    using RepositoryInterface = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    // So many names are used, the letters from "a" on first; paths below the root have one to depth of them.
    TreeWriter(const std::shared_ptr<RepositoryInterface>& repository, const QString& root, quint32 seed,
               int nameCount = 5, int depth = 4);

    void changeOnce();
    QString anyPath();

private:
    std::shared_ptr<RepositoryInterface> repository;
    QString prefix;
    QRandomGenerator random;
    int nameCount;
    int depth;
};

} // namespace TestSupport
