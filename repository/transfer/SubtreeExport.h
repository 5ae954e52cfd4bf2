#pragma once

#include "host/FrameworkCore/AppConfig/TransferReport.h"
#include "repository/documents/common/CarriedComments.h"
#include "repository/documents/common/Format.h"
#include "repository/store/AttributeTree.h"
#include "repository/transfer/TransferProgress.h"

#include <QByteArray>

#include <string>
#include <vector>

namespace Repository {

struct SubtreePart;

// Makes the text of a file of its own out of a subtree. One thread.
class SubtreeExport
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using TransferReport = FrameworkCore::AppConfig::Interfaces::TransferReport;

    // The type is that of the text.
    SubtreeExport(AttributeTree& tree, QString path, const QString& type);

    Outcome run(QByteArray& text, TransferReport& report);

private:
    std::vector<Documents::Entry> entriesOf(const Node& root, std::vector<SubtreePart> parts) const;
    void takeComments(const Backend& source);
    std::string dialectOf(const QByteArray& text) const;
    Outcome writeAsRead(std::vector<Documents::Entry>& entries, QByteArray& text, TransferReport& report);
    Outcome write(std::vector<Documents::Entry>& entries, QByteArray& text, TransferReport& report) const;
    Outcome fill(Documents::Document& document, const std::vector<Documents::Entry>& entries,
                 std::string& prefix, TransferProgress& progress) const;
    Outcome writeEncoded(const std::vector<Documents::Entry>& entries, QByteArray& text,
                         TransferProgress& progress) const;
    template <typename Place>
    void addComments(QByteArray& text, TransferReport& report, const Place& place) const;
    Outcome refusal(const std::string& place, const std::string& error) const;

    AttributeTree& tree;
    const QString path;
    const QString type;
    const std::string name;          // that of the root, for files that have no place for its value
    std::string writtenType;         // that of the text, or a dialect of it
    const Documents::Format* format; // of that; null for an unknown type
    bool isWholeFile = false;        // whose root has a name in the tree only
    std::vector<Documents::CarriedComment> comments;
};

} // namespace Repository
