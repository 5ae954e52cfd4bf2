#pragma once

#include "host/FrameworkCore/AppConfig/AccessMode.h"
#include "host/FrameworkCore/AppConfig/TransferInterface.h"
#include "repository/common/PathRules.h"

#include <QVariant>

#include <memory>
#include <vector>

namespace Repository {

namespace Documents {
class Document;
class Format;
} // namespace Documents
class BulkWrite;

class AttributeStore;
struct AttributeTree;
class TreeEdit;
struct Node;

// Copies, moves, exports and imports subtrees of the store; see TransferInterface. Documents take everything
// before the tree does, so that a refusal can be taken back. Any thread.
class SubtreeTransfer : public FrameworkCore::AppConfig::Interfaces::TransferInterface
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using TransferReport = FrameworkCore::AppConfig::Interfaces::TransferReport;

    explicit SubtreeTransfer(std::shared_ptr<AttributeStore> store);

    Outcome copyTree(const QString& from, const QString& to) override;
    Outcome moveTree(const QString& from, const QString& to) override;
    Outcome exportTree(const QString& path, const QString& type, QByteArray& text) override;
    Outcome importTree(const QString& path, const QString& type, const QByteArray& text) override;

    Outcome copyTree(const QString& from, const QString& to, TransferReport& report) override;
    Outcome exportTree(const QString& path, const QString& type, QByteArray& text,
                       TransferReport& report) override;
    Outcome importTree(const QString& path, const QString& type, const QByteArray& text,
                       TransferReport& report) override;

private:
    // One node of a subtree: an attribute, or a group that has no children.
    struct Part
    {
        QString fullPath;
        int rootLength; // of the path of the subtree's root
        QVariant value;
        FrameworkCore::AppConfig::AccessMode access;
        bool isGroup;

        // Relative to the subtree's root; empty for the root.
        QStringView path() const { return pathBehind(fullPath, rootLength); }
    };

    Outcome transfer(TreeEdit& edit, const QString& from, const QString& to, bool isMove,
                     TransferReport& report);
    Outcome writeTree(const QString& path, const QString& type, QByteArray& text, TransferReport& report);
    Outcome readTree(const QString& path, const QString& type, const QByteArray& text,
                     TransferReport& report);
    static Outcome writeText(const QString& path, const QString& type, std::vector<Part> parts,
                             QByteArray& text, TransferReport& report);
    Outcome importDocument(std::unique_ptr<Documents::Document> document, const Documents::Format& format,
                           const QString& path, std::size_t expected, TransferReport& report);

    // The parts in the order of a file, without what must not be read; hidden is the path of the first such
    // attribute. The structure lock is held.
    std::vector<Part> collect(const Node& root, QString& hidden) const;
    void addPart(const Node& node, int rootLength, std::vector<Part>& parts, QString& hidden) const;

    void addDeclarations(const Node& root, const Documents::Format& format, std::vector<Part>& parts) const;

    // Adds one part to what is to be written.
    Outcome add(BulkWrite& bulk, const QString& path, const Part& part) const;

    static Outcome checkReadable(const std::vector<Part>& parts, const QString& hidden);

    // Runs an operation that was for the path, and logs what came of it.
    template <typename Operation>
    static Outcome run(const QString& path, const Operation& operation);

    std::shared_ptr<AttributeStore> store;
    AttributeTree& tree; // of the store
};

} // namespace Repository
