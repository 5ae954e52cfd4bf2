#pragma once

#include "repository/documents/common/ArrayGroups.h"
#include "repository/documents/common/CarriedComments.h"
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
    using Comments = std::vector<Documents::CarriedComment>;

    // The document, which outlives this as its comments do, is of the format and has a text of that size; its
    // entries come below the path.
    TextInsertion(const Documents::Format& format, const Documents::Document& document, std::size_t size,
                  const Comments& comments, QString path);

    Outcome run(Transaction& transaction, TransferReport& report);

private:
    // A new group or entry: where its entries end in the list, and its path below the target.
    struct Place
    {
        std::size_t end;
        std::string top;
    };
    using Places = std::map<std::size_t, Place>; // by where its entries begin

    void translate(const Backend& target, const Places& places);
    Places newPlaces(const NodeWriter& nodes, const Backend& target) const;
    std::size_t endOf(std::size_t begin, std::string_view group) const;
    Outcome beginWhole(PartWriter& writer, const NodeWriter& nodes, const Places& places, std::size_t begin,
                       std::size_t& end) const;
    Outcome beginArrays(PartWriter& writer, const NodeWriter& nodes, std::size_t begin,
                        std::size_t& end) const;
    bool isOfOneShape(const NodeWriter& nodes, std::string_view array, std::size_t begin,
                      std::size_t end) const;

    const Documents::Format& format;
    const Documents::Document& document;
    const std::size_t size;
    const Comments& comments;
    const QString path;
    const std::vector<Documents::Entry> entries;
    const Documents::ArrayGroups arrays;
    std::unique_ptr<Documents::Document> translated; // of the type of the file
    const Documents::Document* written = nullptr;    // whose text is put there; null when only values are
    std::string placeInWritten;                      // of the path
};

} // namespace Repository
