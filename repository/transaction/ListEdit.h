#pragma once

#include "repository/transaction/Transaction.h"

#include <QStringList>

#include <optional>

namespace Repository {

// Changes single elements of an attribute that is a list, in its backend and in the tree. One thread.
class ListEdit
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;

    ListEdit(Transaction& current, Node& listNode) : transaction(current), list(listNode) {}

    // The elements in a node, which may be null; nothing when it is no list.
    static std::optional<QStringList> textsIn(const NodeWriter& nodes, const Node* node);

    // The value becomes a text. An index is that of an element, or when inserting that of its successor; the
    // number of elements is after the last.
    Outcome insert(int index, const QVariant& value);
    Outcome set(int index, const QVariant& value);
    Outcome remove(int index);

    // Lets a document have these texts at a path: without the element of the other path, if there is one, of
    // which those with the same text keep their spelling.
    static Outcome writeTo(DocumentEdit& document, const QString& path, const QVariant& texts,
                           const QString& removed);

    // That there is no such index where a list or array of so many elements gets another one.
    static Outcome beyond(int count);

private:
    QStringList read();
    Outcome write(const QStringList& texts, const QString& removed = {});

    Transaction& transaction;
    Node& list;
};

} // namespace Repository
