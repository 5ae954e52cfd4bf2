#pragma once

#include "repository/store/Node.h"

#include <QString>

#include <optional>

namespace Repository {

// The index that a name is, in its plain form; nothing for any other name.
std::optional<int> elementIndex(QStringView name);

// An element of an attribute that is a list. It has no node: its path is its index below that of the list.
struct ListElement
{
    QString list; // the path of the attribute
    int index;

    // Nothing for a path that ends in no index.
    static std::optional<ListElement> at(const QString& path);

    // The element in the list's node, which may be null; null where there is none. Attribute lock held.
    static bool isList(const Node* node);
    QVariant readFrom(const Node* node) const;
};

} // namespace Repository
