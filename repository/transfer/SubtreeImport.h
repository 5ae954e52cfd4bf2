#pragma once

#include "host/FrameworkCore/AppConfig/TransferReport.h"
#include "repository/documents/common/Format.h"
#include "repository/operations/AttributeStore.h"

#include <QByteArray>

namespace Repository {

// Puts the entries of a text into the tree, below a path. One thread.
class SubtreeImport
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using TransferReport = FrameworkCore::AppConfig::Interfaces::TransferReport;

    // The format's type, as a file of it has.
    SubtreeImport(AttributeStore& store, const QString& path, const QString& type);

    Outcome run(const QByteArray& text, TransferReport& report) const;

private:
    AttributeStore& store;
    const QString path;
    const QString type;
    const Documents::Format* const format; // null for an unknown type
};

} // namespace Repository
