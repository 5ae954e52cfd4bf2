#include "host/Utilities/ModelViews/monitor/DroppedAttributes.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace Utilities::ModelViews {

using FrameworkCore::AppConfig::Interfaces::ChildInformation;
using FrameworkCore::AppConfig::Interfaces::NodeInformation;
using FrameworkCore::AppConfig::Interfaces::TreeInterface;

QStringList droppedAttributes(const TreeInterface* tree, const QStringList& paths, QSet<QString> watched)
{
    QStringList added;
    const auto add = [&](const QString& path) {
        const int before = watched.size();
        watched.insert(path);
        if (watched.size() > before)
            added.append(path);
    };
    for (const QString& path : paths) {
        if (!tree || !tree->getNodeInformation(path).exists) {
            add(path);
            continue;
        }
        std::vector<QString> toVisit{path}; // the next one is the last
        while (!toVisit.empty()) {
            const QString node = std::move(toVisit.back());
            toVisit.pop_back();
            const NodeInformation information = tree->getNodeInformation(node);
            if (information.isAttribute)
                add(node);
            if (information.childCount == 0)
                continue;
            const QStringList names = tree->getChildNames(node);
            std::for_each(names.crbegin(), names.crend(),
                          [&](const QString& name) { toVisit.push_back(node + QLatin1Char('.') + name); });
        }
    }
    return added;
}

} // namespace Utilities::ModelViews
