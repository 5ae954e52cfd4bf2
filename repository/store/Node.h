#pragma once

#include "host/FrameworkCore/AppConfig/AccessMode.h"
#include "host/FrameworkCore/Values/Value.h"
#include "repository/notification/PatternIndex.h"
#include "repository/store/NamePrefix.h"
#include "repository/store/NodeListeners.h"
#include "repository/store/NodeValue.h"

#include <QString>

#include <atomic>
#include <memory>
#include <optional>
#include <vector>

namespace Repository {

class Backend;
class NodePages;
struct Node;

// Ends a node wherever its memory is from.
struct NodeDeleter
{
    void operator()(Node* node) const noexcept;
};
using NodePointer = std::unique_ptr<Node, NodeDeleter>;

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
    void shrink();                        // to the room that they need
    void drop(Node& child) noexcept;      // the same, without closing gaps
    void setBranchBit(const Node& child); // a child that has children now

    // Visits the children that the filter accepts, and others when there are few, until the visitor gives
    // false.
    template <typename Visitor>
    void visit(const NameFilter& filter, const Visitor& visitor) const
    {
        for (std::size_t i = 0; i < places.size(); ++i) {
            if ((!prefixes || filter.accepts((*prefixes)[i])) && places[i] && !visitor(*places[i]))
                return;
        }
    }

private:
    static NamePrefix prefixOf(const Node& child);
    void fillPrefixes();
    void makeRoom(std::size_t place);
    void giveOwnSlots(std::size_t begin, std::size_t end) noexcept;

    std::unique_ptr<std::vector<NamePrefix>> prefixes; // one for each place; null while the places are few
};

// One place in the tree. What it is made of is guarded in two ways; see AttributeTree. There may be
// millions, so that what few of them have lies in a block of its own, and that each knows its name only,
// which lies right behind it, in one byte for each character where that is enough: its path is put together
// of the names that lead to it.
struct Node
{
    using AccessMode = FrameworkCore::AppConfig::AccessMode;

    Node() : nameSize(0), hasNarrowName(1), isInPage(0) {} // the top

    // One in the parent, which outlives it; the hash is that of its path. Those of one page come soon after
    // each other.
    static NodePointer make(Node& parent, QStringView name, quint32 pathHash, NodePages* pages = nullptr);

    // What is told by the names needs no lock while the node is there. The top has an empty path.
    QString getName() const;
    NamePrefix getNamePrefix() const; // without the branch bit
    void appendName(QString& path) const;
    QString getPath() const;
    void copyPath(QString& path) const; // the same, into the room that the text has
    int getPathSize() const;
    bool hasPath(QStringView path) const;
    bool leadsTo(QStringView path) const; // which is its own, or lies below it

    Children& ensureChildren(); // made if there are none
    bool isBackendRoot() const { return backend && parent->backend != backend; }
    const Validations* getValidations() const
    {
        const NodeListeners::Block* const block = listeners.getBlock();
        return block ? &block->validations : nullptr;
    }

    // An attribute, or else it only groups its children, and value means nothing.
    bool isAttribute() const { return (flags.load(std::memory_order_relaxed) & attributeFlag) != 0; }
    void setAttribute(bool isOne) { setFlags(attributeFlag, isOne ? attributeFlag : 0); }
    AccessMode getAccess() const { return AccessMode(flags.load(std::memory_order_relaxed) & accessBits); }
    void setAccess(AccessMode mode) { setFlags(accessBits, quint32(mode)); }
    bool isReadable() const { return FrameworkCore::AppConfig::isReadable(getAccess()); }

    // The value where its backend has more digits of a second than an attribute holds, or nothing.
    std::optional<FrameworkCore::Values::Value> finerValue() const;

    // As of when the matching listeners are.
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
    friend struct NodeDeleter;

    Node(Node& above, quint32 size, bool isNarrow, bool isPaged, quint32 hash) noexcept
        : parent(&above), pathHash(hash), nameSize(size & mostCharacters), hasNarrowName(isNarrow),
          isInPage(isPaged)
    {
    }

    // The characters of the name in either width.
    const uchar* narrowName() const { return reinterpret_cast<const uchar*>(this + 1); }
    const QChar* wideName() const { return reinterpret_cast<const QChar*>(this + 1); }
    void copyName(QChar* to, quint32 count) const;
    bool hasName(const QChar* name) const; // which has the size

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

    static constexpr int sizeBits = 30; // a QString has no more characters
    static constexpr quint32 mostCharacters = (1U << sizeBits) - 1;
    const quint32 nameSize : sizeBits;
    const quint32 hasNarrowName : 1;
    const quint32 isInPage : 1;

public:
    // The attribute.
    NodeValue value;
    NodeListeners listeners;
};
static_assert(sizeof(Node) <= 56);

} // namespace Repository
