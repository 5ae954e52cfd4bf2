#pragma once

#include "repository/TreeEdit.h"

#include <QString>
#include <QVariant>

#include <vector>

namespace Repository {

// Many attributes created or written by one edit of the tree, all or nothing: the documents take them one by
// one, the tree only in finish. Without finish the documents are taken back to what they were. One thread.
class BulkWrite
{
public:
    using AccessMode = FrameworkCore::AppConfig::AccessMode;
    using StatusCode = FrameworkCore::AppConfig::StatusCode;

    explicit BulkWrite(TreeEdit& edit);
    ~BulkWrite();
    Q_DISABLE_COPY(BulkWrite)

    // Creates an attribute or writes the one that exists, whose type and access stay; the reason when it is
    // refused. The value is of an attribute type.
    StatusCode addAttribute(const QString& path, const QVariant& value, AccessMode access, QString& reason);

    // A group without children, which only a file can hold: nothing is made in memory.
    StatusCode addGroup(const QString& path, QString& reason);

    void finish();

private:
    struct Item
    {
        QString path;
        QVariant value;
        AccessMode access = AccessMode::ReadWrite;
        bool isGroup = false;
        Node* node = nullptr; // not owned; an attribute that exists
    };

    // What is known of the place of a path. Siblings mostly come together, so that it is looked up once for
    // them.
    struct Place
    {
        Node* node = nullptr; // not owned; the path's own, if there is one
        Backend* backend = nullptr;
    };

    Place placeOf(const QString& path);
    QString insert(Backend& backend, const QString& path, const FrameworkCore::Values::Value& value);
    void show(const Item& item);

    TreeEdit& edit;
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
