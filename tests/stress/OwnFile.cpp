#include "tests/stress/OwnFile.h"

#include "repository/AttributeRepository.h"

using namespace FrameworkCore::AppConfig;

OwnFile::OwnFile(std::shared_ptr<RepositoryInterface> usedRepository, QString ownName, QString ownType,
                 QString ownFilePath, QRandomGenerator& generator)
    : repository(std::move(usedRepository)), name(std::move(ownName)), type(std::move(ownType)),
      filePath(std::move(ownFilePath)), random(generator)
{
    expect(mount(*repository), "mounting");
}

void OwnFile::step()
{
    const int choice = random.bounded(100);
    if (choice < 70) {
        write();
    } else if (choice < 85) {
        remove();
    } else if (choice < 92) {
        expect(repository->getBackendInterface()->saveBackend(name), "saving");
        saved = values;
    } else if (choice < 95) {
        expect(repository->getBackendInterface()->reloadBackend(name).ok(), "reloading");
    } else {
        openAgain();
    }
    if (random.bounded(8) == 0)
        expect(read(*repository) == values, "the tree");
}

QStringList OwnFile::finish()
{
    expect(read(*repository) == values, "the last tree");
    expect(repository->getBackendInterface()->saveBackend(name), "the last save");
    const auto other = Repository::AttributeRepository::create({false});
    expect(mount(*other), "reading the file anew");
    expect(read(*other) == values, "what the file holds");
    return faults;
}

QString OwnFile::anyPath()
{
    return name + QStringLiteral(".r.k%1").arg(random.bounded(12));
}

void OwnFile::expect(bool isAsExpected, const char* operation)
{
    if (!isAsExpected)
        faults.append(QStringLiteral("%1 of '%2' was not as expected").arg(QLatin1String(operation), name));
}

bool OwnFile::mount(RepositoryInterface& into) const
{
    return into.getBackendInterface()->createBackend(type, name, {filePath, {}, AccessMode::ReadWrite}, 2);
}

OwnFile::Values OwnFile::read(RepositoryInterface& from) const
{
    Values found;
    for (const QString& path : from.getTreeInterface()->findPaths({name + QStringLiteral(".r.k*")})) {
        QVariant value;
        if (from.getReaderInterface()->readAttributeValue(path, value, 0) == 0)
            found[path] = value.toLongLong();
    }
    return found;
}

void OwnFile::write()
{
    const QString path = anyPath();
    const auto writer = repository->getWriterInterface();
    const bool isThere = values.count(path) > 0;
    const bool isWritten = isThere ? writer->writeAttributeValue(path, ++lastValue, 15) == 0
                                   : writer->createAttribute(path, ++lastValue, 2, 3);
    expect(isWritten, "a write");
    values[path] = lastValue;
}

void OwnFile::remove()
{
    const QString path = anyPath();
    const bool isRemoved = repository->getTreeInterface()->removeTree(path) == Success;
    expect(isRemoved == (values.erase(path) > 0), "a removal");
}

void OwnFile::openAgain()
{
    expect(repository->getBackendInterface()->closeBackend(name, true).ok(), "closing");
    expect(repository->getTreeInterface()->findPaths({name + QStringLiteral(".*")}).isEmpty(),
           "what is left after closing");
    expect(mount(*repository), "mounting again");
    values = saved;
}
