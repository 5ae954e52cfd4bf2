#include "repository/Node.h"

namespace Repository {

void Children::append(Node& child)
{
    child.slot = quint32(places.size());
    places.push_back(&child);
    ++count;
}

void Children::remove(Node& child)
{
    places[child.slot] = nullptr;
    --count;
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
}

QStringView Node::getName() const
{
    return QStringView(path).mid(path.lastIndexOf(QLatin1Char('.')) + 1);
}

} // namespace Repository
