#include "repository/mounting/Mounts.h"

#include "repository/backends/Backend.h"
#include "repository/common/PathRules.h"
#include "repository/common/Texts.h"
#include "repository/history/History.h"
#include "repository/store/AttributeTree.h"
#include "repository/transaction/Projection.h"

#include <algorithm>
#include <functional>

namespace Repository {

using FrameworkCore::AppConfig::Outcome;

namespace {

const QLatin1String backendNamesPath("internal.backends.names");
// What backends say of themselves, while they are open.
const QLatin1String backendStatesPath("internal.backends.states");
const QLatin1String backendUsersPath("internal.backends.users");
const QChar nameSeparator = QLatin1Char(';');

void setOwn(NodeWriter& nodes, const QString& path, const QVariant& value)
{
    nodes.setAttribute(nodes.ensure(path), value, FrameworkCore::AppConfig::AccessMode::ReadOnly);
}

// The names of all, which are thousands where folders are open: edited in place, and not copied for each.
void editNames(NodeWriter& nodes, const std::function<void(QString& names)>& edit)
{
    const QString path = backendNamesPath;
    if (!nodes.find(path))
        setOwn(nodes, path, {});
    nodes.editText(*nodes.find(path), edit);
}

void appendName(QString& names, const QString& name)
{
    if (!names.isEmpty())
        names += nameSeparator;
    names += name;
}

// Mostly one of the last.
void removeName(QString& names, const QString& name)
{
    const auto isWhole = [&](int at) {
        const int end = at + name.size();
        return (at == 0 || names.at(at - 1) == nameSeparator) &&
               (end == names.size() || names.at(end) == nameSeparator);
    };
    int at = names.lastIndexOf(name);
    while (at > 0 && !isWhole(at))
        at = names.lastIndexOf(name, at - 1);
    if (at >= 0)
        names.remove(std::max(at - 1, 0), name.size() + 1);
}

} // namespace

void Mounts::publish(const QString& path, const QVariant& value)
{
    Transaction transaction(tree);
    setOwn(transaction.getNodes(), path, value);
}

Outcome Mounts::mount(const std::shared_ptr<Backend>& backend)
{
    const QString name = backend->getName();
    Transaction transaction(tree);
    const Node* place = transaction.getNodes().find(name);
    if (place && place->isBackendRoot())
        return {StatusCode::AlreadyExists, Texts::tr("a backend of that name exists already")};
    if (place && (place->isAttribute() || (place->children && place->children->count > 0)))
        return {StatusCode::AlreadyExists, Texts::tr("there are attributes at or below it already")};
    if (tree.backends.size() == tree.backends.capacity())
        tree.backends.reserve(2 * tree.backends.size() + 1); // nothing fails once the tree shows it
    Projection(transaction).mount(*backend);
    tree.backends.push_back(backend);
    setOwn(transaction.getNodes(), backendNamesPath + pathSeparator + name, name);
    editNames(transaction.getNodes(), [&name](QString& names) { appendName(names, name); });
    return {};
}

Outcome Mounts::unmount(const std::shared_ptr<Backend>& backend, bool discardChanges)
{
    const Outcome outcome = backend->close(discardChanges);
    if (!outcome.ok())
        return outcome;
    history.forgetClosed();
    Transaction transaction(tree);
    Projection(transaction).unmount(*backend);
    tree.backends.erase(std::find(tree.backends.begin(), tree.backends.end(), backend));
    for (const QLatin1String list : {backendNamesPath, backendStatesPath, backendUsersPath})
        transaction.getNodes().takeAttribute(list + pathSeparator + backend->getName());
    editNames(transaction.getNodes(), [&](QString& names) { removeName(names, backend->getName()); });
    return {};
}

} // namespace Repository
