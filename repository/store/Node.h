#pragma once

#include "host/FrameworkCore/AppConfig/AccessMode.h"
#include "host/FrameworkCore/Values/Value.h"
#include "repository/notification/PatternIndex.h"
#include "repository/notification/RegistrationList.h"
#include "repository/store/NamePrefix.h"
#include "repository/validation/Validation.h"

#include <QString>
#include <QVariant>

#include <atomic>
#include <memory>
#include <optional>
#include <vector>

namespace Repository {

class Backend;
struct Node;

// The children of a node in the order of its document, or in memory of their creation. A removed child leaves
// a gap, so that taking one out of a million costs no more than one of two; gaps are closed when they are the
// greater part.
struct Children
{
    std::vector<Node*> places; // not owned; null where a child was removed
    int count = 0;

    void append(Node& child);
    void insert(Node& child, std::size_t place); // before the one that is there
    const Node* last() const;                    // null when there is none
    // Sorts the children by slots that they have been given, any numbers, before they get their own again;
    // children of one slot stay as they are. Whether any has moved.
    void giveSlots(quint32 slot) noexcept;
    bool orderBySlots() noexcept;
    void remove(Node& child);
    void drop(Node& child) noexcept;      // the same, without closing gaps
    void setBranchBit(const Node& child); // a child that has children now

    // Visits the children that the filter accepts, and others when there are few, until the visitor gives
    // false.
    template <typename Visitor>
    void visit(const NameFilter& filter, const Visitor& visitor) const
    {
        for (std::size_t i = 0; i < places.size(); ++i) {
            if ((prefixes.empty() || filter.accepts(prefixes[i])) && places[i] && !visitor(*places[i]))
                return;
        }
    }

private:
    static NamePrefix prefixOf(const Node& child);
    void fillPrefixes();
    void makeRoom(std::size_t place);
    void giveOwnSlots(std::size_t begin, std::size_t end) noexcept;

    std::vector<NamePrefix> prefixes; // one for each place, or none at all while the places are few
};

// One place in the tree. What it is made of is guarded in two ways; see AttributeTree. There may be
// millions, so that what few of them have lies in a block of its own, and that each knows its name only,
// which lies right behind it: its path is put together of the names that lead to it.
struct Node
{
    using AccessMode = FrameworkCore::AppConfig::AccessMode;

    // What few attributes have.
    struct Extras
    {
        Validations validations;
        Registrations matching; // those whose pattern matches, as of the node's generation
    };

    Node() = default; // the top

    // One in the parent, which outlives it; the hash is that of its path.
    static std::unique_ptr<Node> make(Node& parent, QStringView name, quint32 pathHash);
    static void operator delete(void* block) { ::operator delete(block); }

    // What is told by the names needs no lock while the node is there. The top has an empty path.
    QStringView getName() const { return {reinterpret_cast<const QChar*>(this + 1), nameSize}; }
    QString getPath() const;
    void copyPath(QString& path) const; // the same, into the room that the text has
    int getPathSize() const;
    bool hasPath(QStringView path) const;
    bool leadsTo(QStringView path) const; // which is its own, or lies below it

    Children& ensureChildren(); // made if there are none
    bool isBackendRoot() const { return backend && parent->backend != backend; }
    Extras& ensureExtras(); // made if there are none
    const Validations* getValidations() const { return extras ? &extras->validations : nullptr; }

    // An attribute, or else it only groups its children, and value means nothing.
    bool isAttribute() const { return (flags.load(std::memory_order_relaxed) & attributeFlag) != 0; }
    void setAttribute(bool isOne) { setFlags(attributeFlag, isOne ? attributeFlag : 0); }
    AccessMode getAccess() const { return AccessMode(flags.load(std::memory_order_relaxed) & accessBits); }
    void setAccess(AccessMode mode) { setFlags(accessBits, quint32(mode)); }
    bool isReadable() const { return FrameworkCore::AppConfig::isReadable(getAccess()); }

    // The value where its backend has more digits of a second than an attribute holds, or nothing.
    std::optional<FrameworkCore::Values::Value> finerValue() const;

    // As of when Extras::matching is.
    quint32 getPatternGeneration() const { return flags.load(std::memory_order_relaxed) >> generationShift; }
    void setPatternGeneration(quint32 generation)
    {
        setFlags(~(attributeFlag | accessBits), generation << generationShift);
    }

    // The shape of the tree.
    Node* const parent = nullptr; // not owned; null at the top
    Backend* backend = nullptr;   // not owned; null in memory
    std::unique_ptr<Children> children;
    quint32 slot = 0; // in the parent's children

    const quint32 pathHash = 0;

private:
    Node(Node& above, quint32 size, quint32 hash) noexcept : parent(&above), pathHash(hash), nameSize(size) {}

    static constexpr quint32 accessBits = 3;
    static constexpr quint32 attributeFlag = 4;
    static constexpr int generationShift = 32 - PatternIndex::generationBits;

    void setFlags(quint32 which, quint32 bits)
    {
        flags.store((flags.load(std::memory_order_relaxed) & ~which) | bits, std::memory_order_relaxed);
    }

    // One word for all three, since there may be millions. The attribute lock is held while it is written,
    // but whoever reads access and kind may hold the structure lock alone, while a writer of the value brings
    // the generation up to date.
    std::atomic<quint32> flags{quint32(AccessMode::ReadWrite)};

    const quint32 nameSize = 0; // in characters

public:
    // The attribute.
    QVariant value;         // of one of the attribute types; invalid for null
    RegistrationList exact; // those made for this path
    std::unique_ptr<Extras> extras;
};
static_assert(sizeof(Node) <= 72);

} // namespace Repository
