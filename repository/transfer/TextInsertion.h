#pragma once

#include "repository/documents/common/ArrayGroups.h"
#include "repository/documents/common/Format.h"
#include "repository/transaction/Transaction.h"
#include "repository/transfer/TransferProgress.h"

#include <map>
#include <string>
#include <vector>

namespace Repository {

class PartWriter;

// Puts the entries of a document into the tree: what is new and comes into a file of the same type, as it is
// written. One thread.
class TextInsertion
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using TransferReport = FrameworkCore::AppConfig::Interfaces::TransferReport;

    // The document, which outlives this, is of the format and has a text of that size; its entries come below
    // the path.
    TextInsertion(const Documents::Format& format, const Documents::Document& document, std::size_t size,
                  QString path);

    Outcome run(Transaction& transaction, TransferReport& report) const;

private:
    // A new group or entry: where its entries end in the list, and its path below the target.
    struct Place
    {
        std::size_t end;
        std::string top;
    };
    using Places = std::map<std::size_t, Place>; // by where its entries begin

    Places newPlaces(const NodeWriter& nodes, const Backend& target) const;
    std::size_t endOf(std::size_t begin, std::string_view group) const;
    Outcome beginWhole(PartWriter& writer, const Places& places, std::size_t begin, std::size_t& end) const;
    Outcome beginArrays(PartWriter& writer, std::size_t begin, std::size_t& end) const;

    const Documents::Format& format;
    const Documents::Document& document;
    const std::size_t size;
    const QString path;
    const std::vector<Documents::Entry> entries;
    const Documents::ArrayGroups arrays;
};

} // namespace Repository
