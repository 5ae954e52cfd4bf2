#include "repository/store/AttributeTree.h"

#include "repository/backends/Backend.h"
#include "repository/common/PathRules.h"

namespace Repository {

bool AttributeTree::hidesValues(QStringView path)
{
    for (; !path.isEmpty(); path = parentPath(path)) {
        if (const Node* node = nodeOf(path))
            return !node->isReadable();
    }
    return false;
}

std::vector<std::shared_ptr<Backend>> AttributeTree::getBackends()
{
    const std::shared_lock lock(structure);
    return backends;
}

bool isOwn(const Node& node)
{
    const Node* first = &node;
    while (first->parent && first->parent->parent)
        first = first->parent;
    return first->hasPath(ownRoot);
}

std::vector<Node*> subtreeOf(Node& node, const Backend* onlyBackend)
{
    std::vector<Node*> found{&node};
    for (std::size_t i = 0; i < found.size(); ++i) {
        const Children* children = found[i]->children.get();
        if (!children)
            continue;
        for (Node* child : children->places) {
            if (child && (!onlyBackend || child->backend == onlyBackend))
                found.push_back(child);
        }
    }
    return found;
}

} // namespace Repository
