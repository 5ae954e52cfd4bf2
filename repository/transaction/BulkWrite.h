#pragma once

#include "repository/documents/common/Document.h"
#include "repository/transaction/TreeEdit.h"

#include <QString>
#include <QVariant>

#include <optional>
#include <vector>

namespace Repository {

// Many attributes created or written by one edit of the tree, all or nothing: the documents take them first,
// all at once where nothing is at their root yet, and the tree only in finish. Without finish the documents
// are taken back to what they were. One thread.
class BulkWrite
{
public:
    using AccessMode = FrameworkCore::AppConfig::AccessMode;
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using StatusCode = FrameworkCore::AppConfig::StatusCode;

    // All paths will be at or below the root, and come in the order of a tree: parents first, and all below a
    // node together. The empty root promises nothing.
    BulkWrite(TreeEdit& edit, const QString& root);
    ~BulkWrite();
    Q_DISABLE_COPY(BulkWrite)

    // So many will come.
    void expect(std::size_t count);

    // Creates an attribute or writes the one that exists, whose type and access stay. The value is of an
    // attribute type.
    Outcome addAttribute(const QString& path, const QVariant& value, AccessMode access);

    // A group without children, which only a file can hold: nothing is made in memory.
    Outcome addGroup(const QString& path);

    // What the root's place holds can be taken back even after writeDocuments, when the edit ends without
    // finish.
    void prepareTakingBack();

    // Lets the documents take what they have not yet. A refusal has its path.
    Outcome writeDocuments();

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
    };

    // What is known of the place of a path. Siblings mostly come together, so that it is looked up once for
    // them.
    struct Place
    {
        Node* node = nullptr; // not owned; the path's own, if there is one
        Backend* backend = nullptr;
    };

    Place placeOf(const QString& path);
    Outcome insert(Backend& backend, const QString& path, FrameworkCore::Values::Value value);
    void keepText(Backend& backend);
    void show(const Item& item);
    void showNew();
    Node& newParent(std::vector<Node*>& way, NewNodes& made, QStringView path, bool appends);

    TreeEdit& edit;
    const QString root;
    Backend* newPlace = nullptr;        // not owned; of the root, when nothing is there yet
    std::vector<Documents::Entry> held; // what it takes at once, one for each item
    std::vector<Item> items;
    std::vector<Backend*> touched; // not owned
    QString knownParent;
    Node* parentNode = nullptr; // not owned; that of knownParent, if there is one
    Backend* parentBackend = nullptr;
    bool isParentKnown = false;
    Node* shownParent = nullptr; // not owned; of the item that finish has come to
    bool isFinished = false;
};

} // namespace Repository
