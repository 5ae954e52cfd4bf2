#pragma once

#include "host/FrameworkCore/AppConfig/TransferReport.h"
#include "repository/transaction/Transaction.h"

namespace Repository {

class Backend;
class PartWriter;
class SubtreeRemoval;

// Puts a subtree to where nothing is yet, by a transaction. One thread.
class SubtreeCopy
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using TransferReport = FrameworkCore::AppConfig::Interfaces::TransferReport;

    SubtreeCopy(Transaction& transaction, QString from, QString to);

    // A move takes the subtree away from where it is.
    Outcome run(bool isMove, TransferReport& report);

private:
    Outcome check(const Node* source, bool isMove) const;
    bool isOfOneFormat(const Backend* writer) const;
    Outcome changeDocuments(PartWriter& writer, SubtreeRemoval& removal, const Node& source, bool isMove,
                            const Backend* author, TransferReport& report);

    Transaction& transaction;
    const QString from;
    const QString to;
};

} // namespace Repository
