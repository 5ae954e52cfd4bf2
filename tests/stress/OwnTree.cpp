#include "tests/stress/OwnTree.h"

using namespace FrameworkCore::AppConfig;
using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;

namespace {

constexpr int onceStored = int(UpdatePoint::AfterStore);

bool isWithin(const QString& path, const QString& node)
{
    return path == node || path.startsWith(node + QLatin1Char('.'));
}

} // namespace

OwnTree::OwnTree(std::shared_ptr<RepositoryInterface> usedRepository, QString ownRoot,
                 QRandomGenerator& generator)
    : repository(std::move(usedRepository)), root(std::move(ownRoot)), random(generator)
{
    follower = repository->getNotificationInterface()->registerUpdateCallback(
        root + QStringLiteral(".*"),
        [this](const QString& path, const UpdatePoint&, const UpdateResult& result, const QVariant& value,
               const QString&) {
            if (result == UpdateResult::Removed)
                heard.erase(path);
            else
                heard[path] = value.toLongLong();
        },
        onceStored);
}

OwnTree::~OwnTree() = default;

void OwnTree::step()
{
    const int choice = random.bounded(100);
    if (choice < 20)
        create();
    else if (choice < 50)
        write();
    else if (choice < 65)
        read();
    else if (choice < 73)
        remove();
    else if (choice < 81)
        transfer(choice < 77);
    else if (choice < 92)
        listen();
    else
        endListening();
    expect(heard == values, "what was heard after", root);
}

QStringList OwnTree::finish()
{
    while (!listeners.empty())
        endListening();
    compare();
    follower->end();
    return faults;
}

QString OwnTree::anyPath()
{
    QString path = root;
    const int depth = random.bounded(1, 4);
    for (int i = 0; i < depth; ++i)
        path += QLatin1Char('.') + QString(QLatin1Char(char('a' + random.bounded(4))));
    return path;
}

bool OwnTree::isNode(const QString& path) const
{
    return !attributesWithin(path).isEmpty();
}

QStringList OwnTree::attributesWithin(const QString& path) const
{
    QStringList found;
    for (const auto& [known, value] : values) {
        if (isWithin(known, path))
            found.append(known);
    }
    return found;
}

void OwnTree::expect(bool isAsExpected, const char* operation, const QString& path)
{
    if (!isAsExpected)
        faults.append(QStringLiteral("%1 '%2' was not as expected").arg(QLatin1String(operation), path));
}

void OwnTree::expectCalls(const QStringList& paths)
{
    for (Listener& listener : listeners) {
        for (const QString& path : paths)
            listener.expectedCalls += listener.pattern.matches(path) ? 1 : 0;
    }
}

void OwnTree::create()
{
    const QString path = anyPath();
    const bool isNew = values.count(path) == 0;
    const int option = random.bounded(2) + 2;
    const bool isExpected = isNew || option == 3;
    expect(repository->getWriterInterface()->createAttribute(path, ++lastValue, option, 3) == isExpected,
           "creating", path);
    if (!isExpected)
        return;
    values[path] = lastValue;
    expectCalls({path});
}

void OwnTree::write()
{
    const QString path = anyPath();
    const bool isThere = values.count(path) > 0;
    const int status = repository->getWriterInterface()->writeAttributeValue(path, ++lastValue, onceStored);
    expect((status == 0) == isThere, "writing", path);
    if (!isThere)
        return;
    values[path] = lastValue;
    expectCalls({path});
}

void OwnTree::read()
{
    const QString path = anyPath();
    const auto known = values.find(path);
    QVariant value;
    const int status = repository->getReaderInterface()->readAttributeValue(path, value, 0);
    expect((status == 0) == (known != values.end()), "reading", path);
    expect(status != 0 || value == QVariant(known->second), "the value of", path);
}

void OwnTree::remove()
{
    const QString path = anyPath();
    const QStringList gone = attributesWithin(path);
    const bool isRemoved = repository->getTreeInterface()->removeTree(path) == Success;
    expect(isRemoved == !gone.isEmpty(), "removing", path);
    for (const QString& each : gone)
        values.erase(each);
    expectCalls(gone);
}

void OwnTree::transfer(bool isMove)
{
    const QString from = anyPath();
    const QString to = anyPath();
    const QStringList sources = attributesWithin(from);
    const bool isExpected = !sources.isEmpty() && !isNode(to) && !isWithin(to, from);
    const auto transfers = repository->getTransferInterface();
    const Outcome outcome = isMove ? transfers->moveTree(from, to) : transfers->copyTree(from, to);
    expect(outcome.ok() == isExpected, isMove ? "moving" : "copying", from);
    if (!isExpected)
        return;
    QStringList told = isMove ? sources : QStringList();
    for (const QString& source : sources) {
        const QString copy = to + source.mid(from.size());
        values[copy] = values[source];
        told.append(copy);
        if (isMove)
            values.erase(source);
    }
    expectCalls(told);
}

void OwnTree::listen()
{
    if (listeners.size() > 12)
        return;
    QString target = anyPath();
    if (random.bounded(2) == 0)
        target += QLatin1Char('*');
    const auto calls = std::make_shared<std::atomic<int>>(0);
    listeners.push_back({PathPattern(target),
                         repository->getNotificationInterface()->registerUpdateCallback(
                             target, [calls](auto&&...) { ++*calls; }, onceStored),
                         calls});
}

void OwnTree::endListening()
{
    if (listeners.empty())
        return;
    const auto place = listeners.begin() + random.bounded(int(listeners.size()));
    place->registration->end();
    expect(*place->calls == place->expectedCalls, "the count of calls for",
           place->pattern.getLiterals().join(QLatin1Char('*')));
    listeners.erase(place);
}

void OwnTree::compare()
{
    QStringList present;
    for (const QString& path : repository->getTreeInterface()->findPaths({root + QStringLiteral(".*")})) {
        QVariant value;
        if (repository->getReaderInterface()->readAttributeValue(path, value, 0) == 0)
            present.append(QStringLiteral("%1=%2").arg(path, value.toString()));
    }
    present.sort();
    QStringList expected;
    for (const auto& [path, value] : values)
        expected.append(QStringLiteral("%1=%2").arg(path, QString::number(value)));
    expected.sort();
    expect(present == expected, "what is left below", root);
}
