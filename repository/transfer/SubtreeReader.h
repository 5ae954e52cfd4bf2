#pragma once

#include "host/FrameworkCore/AppConfig/AccessMode.h"
#include "host/FrameworkCore/AppConfig/Outcome.h"
#include "host/FrameworkCore/Values/Value.h"
#include "repository/common/PathRules.h"

#include <QVariant>

#include <optional>
#include <vector>

namespace Repository {

namespace Documents {
class Format;
} // namespace Documents
class Backend;
struct AttributeTree;
struct Node;

// One node of a subtree: an attribute, or a group that has no children.
struct SubtreePart
{
    QString fullPath;
    int rootLength; // of the path of the subtree's root
    QVariant value;
    FrameworkCore::AppConfig::AccessMode access; // of a copy
    bool isGroup;
    std::optional<FrameworkCore::Values::Value> inFile; // where it has more digits than an attribute

    // What a file is to hold.
    FrameworkCore::Values::Value exact() const;

    // Relative to the subtree's root; empty for the root.
    QStringView path() const { return pathAfter(fullPath, rootLength); }
};

// Reads a subtree in the order of a file, without what must not be read. The structure lock is held until the
// parts are taken.
class SubtreeReader
{
public:
    SubtreeReader(AttributeTree& tree, const Node& root);

    // What elements around the subtree declare and it uses, for a file of its own.
    void addDeclarations(const Documents::Format& format);

    // Refused when something must not be read, of that which is to be taken whole; otherwise when that is all
    // there is.
    FrameworkCore::AppConfig::Outcome check(bool isWhole) const;

    // The backend that has all of the subtree written, of which nothing is hidden; null for none.
    const Backend* getWriter() const;

    const std::vector<SubtreePart>& getParts() const { return parts; }
    std::vector<SubtreePart> takeParts() { return std::move(parts); }

private:
    void add(const Node& node, int rootLength);
    bool isReference(const Node& node);

    AttributeTree& tree;
    const Node& root;
    std::vector<SubtreePart> parts;
    const Backend* asked = nullptr; // not owned
    bool isLinked = false;          // that one
    QString hidden;                 // the path of the first attribute that must not be read
};

} // namespace Repository
