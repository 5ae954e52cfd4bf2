#include "repository/store/AttributeTree.h"

#include "repository/backends/Backend.h"
#include "repository/common/PathRules.h"

namespace Repository {

AttributeTree::AttributeTree() = default;

AttributeTree::~AttributeTree() = default;

const Node* AttributeTree::nodeOf(QStringView path)
{
    return path.isEmpty() ? &top : index.find(NodeIndex::Key(path));
}

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

} // namespace Repository
