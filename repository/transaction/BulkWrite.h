#pragma once

#include "repository/documents/common/CarriedComments.h"
#include "repository/transaction/Transaction.h"

#include <QString>
#include <QVariant>

#include <optional>
#include <vector>

namespace Repository {

// Creates or writes many attributes by one transaction: the documents take them first, all at once where
// nothing is at their root yet, and the tree only in finish, which commits the transaction. One thread.
class BulkWrite
{
public:
    using AccessMode = FrameworkCore::AppConfig::AccessMode;
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using StatusCode = FrameworkCore::AppConfig::StatusCode;

    // All paths will be at or below the root, and come in the order of a tree: parents first, and all below a
    // node together.
    BulkWrite(Transaction& transaction, const QString& root);

    // So many will come.
    void expect(std::size_t count);

    // Creates an attribute or writes the one that exists, whose type and access stay. The value is of an
    // attribute type; a file gets the other one where that has more digits.
    Outcome addAttribute(const QString& path, const QVariant& value, AccessMode access,
                         const std::optional<FrameworkCore::Values::Value>& inFile);

    // A group without children, which only a file can hold: nothing is made in memory.
    Outcome addGroup(const QString& path);

    // From here on, what comes at or below a path is put there as a whole, as arrays need it. What is there
    // already goes. Where nothing is yet, an excerpt of the same type that gives what comes is put there.
    Outcome beginWhole(const QString& path, std::optional<Documents::Excerpt> excerpt = {});

    // Puts it there.
    Outcome endWhole();

    // The path at or above that one which is the first where nothing is yet; empty where something is.
    QString firstMissing(const QString& path) const;

    // Whether nothing is at the root yet, so that all is put there as a whole.
    bool isNew() const { return newPlace; }
    bool isGroup(const QString& path) const;

    // Lets the documents take what they have not yet. A refusal has its path.
    Outcome writeDocuments();

    // Instead of that, where nothing is at the root yet, and what was added is what there is at a place of
    // the same format: gives that place the root's name, which is in the same group, or writes its excerpt at
    // the root. Nothing and false where writeDocuments has to do it.
    std::optional<Outcome> renameInDocument(const QString& place);
    bool writeExcerpt(const Documents::Excerpt& excerpt);

    // The same with comments of another format at their entries, which have paths below the root: how many of
    // them have no place there. Nothing where writeDocuments has to do it without them.
    std::optional<std::size_t> writeCommented(const std::vector<Documents::CarriedComment>& comments);

    // After writeDocuments.
    void finish();

private:
    struct Item
    {
        QString path;
        QVariant value;
        AccessMode access = AccessMode::ReadWrite;
        bool isGroup = false;
        Node* node = nullptr; // not owned; an attribute that exists
        quint32 hash = 0;     // of the path of a new attribute
        bool isShown = false; // with all of its backend
    };

    // What is put to a place as a whole.
    struct Whole
    {
        QString path;
        Backend* backend = nullptr; // not owned; null in memory
        Node* former = nullptr;     // not owned; what is there, if anything
        std::size_t firstItem = 0;
        std::vector<Documents::Entry> entries;
        std::optional<Documents::Excerpt> excerpt;
    };

    // Where a path leads. Siblings mostly come together, so that it is looked up once for
    // them.
    struct Target
    {
        Node* node = nullptr; // not owned; the path's own, if there is one
        Backend* backend = nullptr;
    };

    Node& noteParent(Node& node);
    Target targetOf(const QString& path);
    bool isInWhole(const QString& path);
    Outcome explain(Outcome outcome, const Item& item, Backend& backend) const;
    Outcome insert(Backend& backend, const QString& path, FrameworkCore::Values::Value value);
    Outcome write(const Node& node, const QVariant& value,
                  const std::optional<FrameworkCore::Values::Value>& inFile, QVariant& accepted);
    DocumentEdit& edit(Backend& backend);
    void show(const Item& item);
    void showNew();
    Node& newParent(std::vector<Node*>& way, NewNodes& made, QStringView path, bool appends);

    Transaction& transaction;
    NodeWriter& nodes;
    const QString root;
    Backend* newPlace = nullptr;        // not owned; of the root, when nothing is there yet
    std::vector<Documents::Entry> held; // what it takes at once, one for each item
    std::vector<Item> items;
    std::optional<Whole> whole;     // that entries still come for
    std::vector<Node*> replaced;    // not owned; in memory
    std::vector<Backend*> reshaped; // not owned
    std::vector<Backend*> batches;  // not owned; those with a batch of insertions
    QString knownParent;
    QStringList parents;        // attributes below which something may come
    Node* parentNode = nullptr; // not owned; that of knownParent, if there is one
    Backend* parentBackend = nullptr;
    bool isParentKnown = false;
    Node* shownParent = nullptr; // not owned; of the item that finish has come to
};

} // namespace Repository
