#include "repository/store/Node.h"

#include "repository/backends/Backend.h"
#include "repository/store/NodePages.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace Repository {

namespace {

constexpr QChar separator = QLatin1Char('.');
constexpr std::size_t nearPlaces = 64;
constexpr std::size_t manyPlaces = 1024; // from so many on, a search looks at the beginnings of names first

template <typename Row>
auto at(Row& row, std::size_t place)
{
    return row.begin() + typename Row::difference_type(place);
}

} // namespace

void Children::append(Node& child)
{
    if (prefixes && prefixes->size() == prefixes->capacity())
        prefixes->reserve(2 * prefixes->size());
    child.slot = quint32(places.size());
    places.push_back(&child); // nothing fails after it, so that the child is in both or in none
    ++count;
    if (prefixes)
        prefixes->push_back(prefixOf(child));
    else if (places.size() == manyPlaces)
        fillPrefixes();
}

// What follows moves up as far as the next gap. Where that is far, room is made for more that may come,
// unless there are gaps enough.
void Children::insert(Node& child, std::size_t place)
{
    if (place == places.size()) {
        append(child);
        return;
    }
    if (place > 0 && !places[place - 1])
        --place;
    auto gap = std::size_t(std::find(at(places, place), places.end(), nullptr) - places.begin());
    if (gap - place > nearPlaces && places.size() - std::size_t(count) < std::size_t(count) / 8) {
        makeRoom(place);
        gap = place;
    }
    if (gap == places.size()) {
        append(child);
    } else {
        places[gap] = &child;
        if (prefixes)
            (*prefixes)[gap] = prefixOf(child);
        ++count;
    }
    const auto moveUp = [place, gap](auto& row) {
        std::rotate(at(row, place), at(row, gap), at(row, gap + 1));
    };
    moveUp(places);
    if (prefixes)
        moveUp(*prefixes);
    giveOwnSlots(place, gap + 1);
}

// Makes gaps before a place.
void Children::makeRoom(std::size_t place)
{
    const std::size_t size = places.size() + nearPlaces;
    places.reserve(size);
    if (prefixes) {
        prefixes->reserve(size);
        prefixes->insert(at(*prefixes, place), nearPlaces, NamePrefix());
    }
    places.insert(at(places, place), nearPlaces, nullptr);
    giveOwnSlots(place + nearPlaces, size);
}

void Children::giveOwnSlots(std::size_t begin, std::size_t end) noexcept
{
    for (std::size_t i = begin; i < end; ++i) {
        if (places[i])
            places[i]->slot = quint32(i);
    }
}

const Node* Children::last() const
{
    const auto found = std::find_if(places.rbegin(), places.rend(), [](const Node* child) { return child; });
    return found == places.rend() ? nullptr : *found;
}

void Children::giveSlots(quint32 slot) noexcept
{
    for (Node* const child : places) {
        if (child)
            child->slot = slot;
    }
}

bool Children::orderBySlots() noexcept
{
    places.erase(std::remove(places.begin(), places.end(), nullptr), places.end());
    const auto isBefore = [](const Node* a, const Node* b) { return a->slot < b->slot; };
    const bool isMoved = !std::is_sorted(places.begin(), places.end(), isBefore);
    if (isMoved)
        std::stable_sort(places.begin(), places.end(), isBefore);
    giveOwnSlots(0, places.size());
    prefixes.reset();
    if (places.size() >= manyPlaces)
        fillPrefixes();
    return isMoved;
}

void Children::drop(Node& child) noexcept
{
    places[child.slot] = nullptr;
    --count;
}

void Children::remove(Node& child)
{
    drop(child);
    if (places.size() < 16 || places.size() < 2 * std::size_t(count))
        return;
    std::vector<Node*> closed;
    closed.reserve(std::size_t(count) + 1);
    for (Node* kept : places) {
        if (kept) {
            kept->slot = quint32(closed.size());
            closed.push_back(kept);
        }
    }
    places = std::move(closed);
    prefixes.reset();
    if (places.size() >= manyPlaces)
        fillPrefixes();
}

void Children::shrink()
{
    places.shrink_to_fit();
    if (prefixes)
        prefixes->shrink_to_fit();
}

void Children::setBranchBit(const Node& child)
{
    if (prefixes)
        (*prefixes)[child.slot].setBranchBit();
}

NamePrefix Children::prefixOf(const Node& child)
{
    NamePrefix prefix = child.getNamePrefix();
    if (child.children)
        prefix.setBranchBit();
    return prefix;
}

// A search does without them, too.
void Children::fillPrefixes()
{
    try {
        prefixes = std::make_unique<std::vector<NamePrefix>>();
        prefixes->reserve(places.capacity());
    } catch (const std::bad_alloc&) {
        prefixes.reset();
        return;
    }
    for (const Node* const child : places)
        prefixes->push_back(child ? prefixOf(*child) : NamePrefix());
}

void NodeDeleter::operator()(Node* node) const noexcept
{
    const bool isInPage = node->isInPage;
    node->~Node();
    if (isInPage)
        NodePages::release(node);
    else
        ::operator delete(node);
}

NodePointer Node::make(Node& parent, QStringView name, quint32 pathHash, NodePages* pages)
{
    const auto size = quint32(name.size());
    const bool isNarrow = std::all_of(name.begin(), name.end(), [](QChar c) { return c.unicode() <= 0xFF; });
    const std::size_t bytes = sizeof(Node) + size * (isNarrow ? 1 : sizeof(QChar));
    void* block = pages ? pages->take(bytes) : nullptr;
    const bool isPaged = block != nullptr;
    if (!isPaged)
        block = ::operator new(bytes);
    NodePointer node(::new (block) Node(parent, size, isNarrow, isPaged, pathHash));
    char* const behind = static_cast<char*>(block) + sizeof(Node);
    if (isNarrow)
        std::transform(name.begin(), name.end(), behind, [](QChar c) { return c.toLatin1(); });
    else
        std::memcpy(behind, name.data(), size * sizeof(QChar));
    return node;
}

void Node::copyName(QChar* to, quint32 count) const
{
    if (hasNarrowName)
        std::transform(narrowName(), narrowName() + count, to, [](uchar c) { return QLatin1Char(char(c)); });
    else
        std::memcpy(to, wideName(), count * sizeof(QChar));
}

bool Node::hasName(const QChar* name) const
{
    if (hasNarrowName)
        return std::equal(narrowName(), narrowName() + nameSize, name,
                          [](uchar c, QChar other) { return c == other.unicode(); });
    return std::memcmp(name, wideName(), nameSize * sizeof(QChar)) == 0;
}

QString Node::getName() const
{
    QString name(int(nameSize), Qt::Uninitialized);
    copyName(name.data(), nameSize);
    return name;
}

NamePrefix Node::getNamePrefix() const
{
    QChar characters[NamePrefix::length];
    const quint32 count = std::min<quint32>(nameSize, NamePrefix::length);
    copyName(characters, count);
    return NamePrefix(QStringView(characters, count));
}

void Node::appendName(QString& path) const
{
    if (!path.isEmpty())
        path += separator;
    const int begin = path.size();
    path.resize(begin + int(nameSize));
    copyName(path.data() + begin, nameSize);
}

int Node::getPathSize() const
{
    int size = -1; // the first name has no separator before it
    for (const Node* node = this; node->parent; node = node->parent)
        size += int(node->nameSize) + 1;
    return std::max(size, 0);
}

void Node::copyPath(QString& path) const
{
    path.resize(getPathSize());
    QChar* end = path.data() + path.size();
    for (const Node* node = this; node->parent; node = node->parent) {
        end -= node->nameSize;
        node->copyName(end, node->nameSize);
        if (node->parent->parent)
            *--end = separator;
    }
}

QString Node::getPath() const
{
    QString path;
    copyPath(path);
    return path;
}

bool Node::hasPath(QStringView path) const
{
    const Node* node = this;
    while (node->parent) {
        const qsizetype begin = path.size() - qsizetype(node->nameSize);
        if (begin < 0 || !node->hasName(path.data() + begin))
            return false;
        node = node->parent;
        if (!node->parent)
            return begin == 0;
        if (begin == 0 || path[begin - 1] != separator)
            return false;
        path = path.left(begin - 1);
    }
    return path.isEmpty();
}

bool Node::leadsTo(QStringView path) const
{
    const int size = getPathSize();
    const bool isWhole = size == 0 || size == path.size() || (size < path.size() && path[size] == separator);
    return isWhole && hasPath(path.left(size));
}

Children& Node::ensureChildren()
{
    if (!children) {
        children = std::make_unique<Children>();
        if (parent)
            parent->children->setBranchBit(*this);
    }
    return *children;
}

std::optional<FrameworkCore::Values::Value> Node::finerValue() const
{
    const int type = value.getType();
    const bool mayBe = backend && (type == QMetaType::QTime || type == QMetaType::QDateTime);
    return mayBe ? backend->finerValueAt(getPath()) : std::nullopt;
}

} // namespace Repository
