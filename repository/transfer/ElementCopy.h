#pragma once

#include "host/FrameworkCore/AppConfig/TransferReport.h"
#include "repository/documents/common/Document.h"
#include "repository/transaction/Transaction.h"

#include <QStringList>

#include <set>
#include <vector>

namespace Repository {

// Copies or moves what is an element of an array, or becomes one before another, by a transaction. One
// thread.
class ElementCopy
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using TransferReport = FrameworkCore::AppConfig::Interfaces::TransferReport;

    ElementCopy(Transaction& current, QString fromPath, QString toPath);

    // Whether it has to do with elements, which SubtreeCopy knows nothing of.
    bool isNeeded(bool isMove) const;

    // The documents change first, and the tree only when none of them refuses.
    Outcome run(bool isMove, TransferReport& report);

private:
    // A place that is, or may become, an element.
    struct Place
    {
        QString array; // its path
        int index = -1;
        Node* node = nullptr;   // not owned; the place's own
        Node* parent = nullptr; // not owned; the array's, or whatever is there
        bool isInList = false;
    };

    Place placeOf(const QString& path) const;
    bool isArray(const Node* node) const;
    Outcome readSource(bool isMove);
    std::optional<Outcome> reorder();
    const Backend* writerOfSource() const;
    bool writeExcerpt(Backend& backend, bool& losesComments);
    Outcome insert(bool isMove, TransferReport& report);
    Outcome remove();
    Outcome changeList(Node& list, const QString& path, QStringList texts, const QString& removed = {});
    QString sourceAfterInsertion() const;
    void show(bool isMove);

    Transaction& transaction;
    NodeWriter& nodes;
    const QString from;
    const QString to;
    const Place source;
    const Place target;
    std::vector<Documents::Entry> entries;            // of the source
    std::vector<std::pair<Node*, QStringList>> lists; // what lists in memory become
    std::set<Backend*> edited;                        // not owned
    bool isWritten = false;                           // the source is there by its excerpt
};

} // namespace Repository
