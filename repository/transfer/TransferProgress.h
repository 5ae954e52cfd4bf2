#pragma once

#include "host/FrameworkCore/AppConfig/Outcome.h"
#include "host/FrameworkCore/AppConfig/TransferReport.h"
#include "repository/common/Texts.h"

namespace Repository {

// Writes to a report how many parts of a transfer are done, every few hundred of them. One thread.
class TransferProgress
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using TransferReport = FrameworkCore::AppConfig::Interfaces::TransferReport;

    TransferProgress(TransferReport& transferReport, std::size_t total) : report(transferReport)
    {
        report.setTotal(int(total));
    }

    // One more is done; false when the transfer is not wanted any more.
    bool advance()
    {
        if (++done % 256 == 0)
            report.setDone(done);
        return !report.isCancelled();
    }

    static Outcome cancelled()
    {
        return {FrameworkCore::AppConfig::Cancelled, Texts::tr("it was cancelled")};
    }

private:
    TransferReport& report; // not owned
    int done = 0;
};

} // namespace Repository
