#include "repository/Node.h"

#include <new>

namespace Repository {

namespace {

constexpr std::size_t manyPlaces = 1024; // from so many on, a search looks at the beginnings of names first

} // namespace

void Children::append(Node& child)
{
    if (!prefixes.empty() && prefixes.size() == prefixes.capacity())
        prefixes.reserve(2 * prefixes.size());
    child.slot = quint32(places.size());
    places.push_back(&child); // nothing fails behind it, so that the child is in both or in none
    ++count;
    if (!prefixes.empty())
        prefixes.push_back(prefixOf(child));
    else if (places.size() == manyPlaces)
        fillPrefixes();
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
    prefixes.clear();
    if (places.size() >= manyPlaces)
        fillPrefixes();
}

void Children::markBranch(const Node& child)
{
    if (!prefixes.empty())
        prefixes[child.slot].markBranch();
}

NamePrefix Children::prefixOf(const Node& child)
{
    NamePrefix prefix(child.getName());
    if (child.children)
        prefix.markBranch();
    return prefix;
}

// A search does without them, too.
void Children::fillPrefixes()
{
    try {
        prefixes.reserve(places.capacity());
    } catch (const std::bad_alloc&) {
        return;
    }
    for (const Node* const child : places)
        prefixes.push_back(child ? prefixOf(*child) : NamePrefix());
}

Children& Node::childrenToFill()
{
    if (!children) {
        children = std::make_unique<Children>();
        if (parent)
            parent->children->markBranch(*this);
    }
    return *children;
}

Node::Extras& Node::extrasToFill()
{
    if (!extras)
        extras = std::make_unique<Extras>();
    return *extras;
}

QStringView Node::getName() const
{
    return QStringView(path).mid(path.lastIndexOf(QLatin1Char('.')) + 1);
}

} // namespace Repository
