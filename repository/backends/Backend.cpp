#include "repository/backends/Backend.h"

#include "repository/common/PathRules.h"

namespace Repository {

using FrameworkCore::Values::Value;

std::string Backend::relative(const QString& path) const
{
    return path.mid(description.name.size() + 1).toStdString();
}

QString Backend::absolute(const std::string& path) const
{
    return joinedPath(description.name, path);
}

void Backend::visit(const std::function<void(const QString&, const Value&)>& visitor) const
{
    visitEntries([&](const Documents::Entry& entry) { visitor(absolute(entry.path), entry.value); });
}

} // namespace Repository
