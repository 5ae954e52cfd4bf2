#include "tests/stress/SharedFiles.h"

#include "repository/AttributeRepository.h"

#include <QFile>
#include <QSaveFile>

using namespace FrameworkCore::AppConfig;
using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;

namespace {

// What another program writes.
QByteArray textOf(const QString& type, int first, int second)
{
    const QByteArray a = QByteArray::number(first);
    const QByteArray b = QByteArray::number(second);
    if (type == QLatin1String("json"))
        return "{\"r\": {\"a\": " + a + ", \"s\": {\"b\": " + b + "}}}\n";
    if (type == QLatin1String("ini"))
        return "[r]\na=" + a + "\n[r.s]\nb=" + b + "\n";
    if (type == QLatin1String("txt"))
        return "r.a = " + a + "\nr.s.b = " + b + "\n";
    if (type == QLatin1String("toml"))
        return "[r]\na = " + a + "\n[r.s]\nb = " + b + "\n";
    if (type == QLatin1String("yaml"))
        return "r:\n  a: " + a + "\n  s:\n    b: " + b + "\n";
    return "<r><a>" + a + "</a><s><b>" + b + "</b></s></r>\n";
}

thread_local bool isInCallback = false;

} // namespace

SharedFiles::SharedFiles(std::shared_ptr<RepositoryInterface> usedRepository, QString usedFolder,
                         QRandomGenerator& generator)
    : repository(std::move(usedRepository)), folder(std::move(usedFolder)), random(generator)
{
}

const QStringList& SharedFiles::types()
{
    static const QStringList all{QStringLiteral("json"), QStringLiteral("ini"),  QStringLiteral("txt"),
                                 QStringLiteral("xml"),  QStringLiteral("toml"), QStringLiteral("yaml")};
    return all;
}

QString SharedFiles::anyBackend()
{
    return types().at(random.bounded(types().size()));
}

QString SharedFiles::anyPath()
{
    static const QStringList below{QStringLiteral("r.a"),   QStringLiteral("r.s.b"), QStringLiteral("r.s.c"),
                                   QStringLiteral("r.t.d"), QStringLiteral("r.t"),   QStringLiteral("r.s"),
                                   QStringLiteral("r.e.f")};
    const QString root = random.bounded(8) == 0 ? QStringLiteral("free") : anyBackend();
    return root + QLatin1Char('.') + below.at(random.bounded(below.size()));
}

QString SharedFiles::fileOf(const QString& backend) const
{
    return folder + QStringLiteral("/shared.") + backend;
}

bool SharedFiles::mount(RepositoryInterface& into, const QString& backend, int option) const
{
    return into.getBackendInterface()->createBackend(backend, backend,
                                                     {fileOf(backend), {}, AccessMode::ReadWrite}, option);
}

void SharedFiles::step()
{
    const int choice = random.bounded(100);
    if (choice < 40)
        edit();
    else if (choice < 50)
        editSteps();
    else if (choice < 65)
        useBackend();
    else if (choice < 72)
        useChanges();
    else if (choice < 78)
        transfer();
    else if (choice < 80)
        replace();
    else if (choice < 90)
        look();
    else if (choice < 95)
        listen();
    else
        writeFromOutside();
}

void SharedFiles::edit()
{
    const QString path = anyPath();
    const int choice = random.bounded(10);
    if (choice < 5)
        repository->getWriterInterface()->writeAttributeValue(path, random.bounded(1000), 15);
    else if (choice < 8)
        repository->getWriterInterface()->createAttribute(path, random.bounded(1000), 3, 3);
    else
        repository->getTreeInterface()->removeTree(path);
}

void SharedFiles::editSteps()
{
    const auto history = repository->getHistoryInterface();
    {
        const auto step = history->beginStep(QStringLiteral("Several"));
        edit();
        edit();
    }
    if (random.bounded(2) == 0)
        history->undo();
    if (random.bounded(4) == 0)
        history->redo();
}

void SharedFiles::useBackend()
{
    const auto backends = repository->getBackendInterface();
    const QString name = anyBackend();
    switch (random.bounded(8)) {
    case 0:
        backends->closeBackend(name, random.bounded(2) == 0);
        break;
    case 1:
        backends->saveBackend(name);
        break;
    case 2:
        backends->reloadBackend(name);
        break;
    case 3:
        backends->getBackendInformation(name);
        break;
    default:
        if (!mount(*repository, name, random.bounded(2) + 2))
            repository->getTreeInterface()->removeTree(name); // what was made in its place
    }
}

void SharedFiles::useChanges()
{
    const auto changes = repository->getChangesInterface();
    const QString name = anyBackend();
    QString diff;
    switch (random.bounded(8)) {
    case 0:
        changes->revert(anyPath());
        break;
    case 1:
        changes->resolveConflicts(name, random.bounded(2) == 0 ? Interfaces::ConflictSide::Mine
                                                               : Interfaces::ConflictSide::Theirs);
        break;
    case 2:
        changes->getUnsavedChanges(name);
        changes->getUnsavedDiff(name, diff);
        break;
    case 3:
        changes->revertChanges(name, {anyPath(), anyPath()});
        break;
    case 4:
        changes->saveChanges(name, {anyPath(), anyPath()});
        break;
    case 5:
    case 6:
        if (changes->getUnsavedDiff(name, diff).ok() && diff.contains(QLatin1String("\n@@"))) {
            const QStringList hunks(diff.mid(diff.indexOf(QLatin1String("\n@@")) + 1));
            random.bounded(2) == 0 ? changes->saveHunks(name, hunks) : changes->revertHunks(name, hunks);
        }
        break;
    default:
        changes->getEditedBackends();
    }
}

void SharedFiles::transfer()
{
    const auto transfers = repository->getTransferInterface();
    QByteArray text;
    switch (random.bounded(3)) {
    case 0:
        transfers->moveTree(anyPath(), anyPath());
        break;
    case 1:
        transfers->copyTree(anyPath(), anyPath());
        break;
    default:
        if (transfers->exportTree(anyPath(), QStringLiteral("json"), text) == Success)
            transfers->importTree(anyPath(), QStringLiteral("json"), text);
    }
}

// One digit by another, wherever it is in the values of a file.
void SharedFiles::replace()
{
    const auto search = repository->getSearchInterface();
    Interfaces::SearchQuery query;
    query.text = QString::number(random.bounded(10));
    query.fields = Interfaces::SearchQuery::Value;
    query.roots = QStringList{anyBackend()};
    query.replacement = QString::number(random.bounded(10));
    QVector<Interfaces::SearchHit> found;
    search->find(query, [&found](const QVector<Interfaces::SearchHit>& hits, int) {
        found += hits;
        return true;
    });
    search->replace(found, QStringLiteral("Replace"));
}

void SharedFiles::look()
{
    const auto tree = repository->getTreeInterface();
    const QString path = anyPath();
    QVariant value;
    repository->getReaderInterface()->readAttributeValue(path, value, 0);
    repository->getReaderInterface()->getAttribute(path);
    tree->getNodeInformation(path);
    tree->getChildren(anyBackend());
    tree->findPaths({QStringLiteral("*s.b*")});
    const auto texts = repository->getTextInterface();
    Interfaces::TextPlace place;
    if (texts->locate(path, place).ok() && random.bounded(4) == 0) {
        Interfaces::BackendText text;
        QString found;
        texts->getText(anyBackend(), text);
        texts->findAt(anyBackend(), place.position.line, place.position.column, found);
    }
    if (random.bounded(20) == 0)
        repository->getValidationInterface()->addValidation(QStringLiteral("free.r.a"),
                                                            QStringLiteral("integer"));
}

// Its callback does on the writing thread what may be done in one: all that there is.
void SharedFiles::listen()
{
    endListening();
    const auto callback = [repository = repository.get()](const QString& path, const UpdatePoint&,
                                                          const UpdateResult& result, const QVariant& value,
                                                          const QString& backend) {
        if (std::exchange(isInCallback, true))
            return;
        const int number = value.toInt();
        if (result == UpdateResult::Removed && path.endsWith(QLatin1Char('c')))
            repository->getWriterInterface()->createAttribute(path, 1, 3, 3);
        else if (number % 16 == 0)
            repository->getBackendInterface()->saveBackend(backend);
        else if (number % 16 == 1)
            repository->getBackendInterface()->closeBackend(backend, true);
        else if (number % 16 == 2)
            repository->getHistoryInterface()->undo();
        else if (number % 16 == 3)
            repository->getTreeInterface()->removeTree(path);
        isInCallback = false;
    };
    const QString target = random.bounded(2) == 0 ? anyPath() : anyBackend() + QStringLiteral(".*");
    registration = repository->getNotificationInterface()->registerUpdateCallback(
        target, callback, int(UpdatePoint::AfterStore));
}

void SharedFiles::writeFromOutside()
{
    const QString name = anyBackend();
    const QByteArray text = textOf(name, random.bounded(1000), random.bounded(1000));
    if (random.bounded(6) == 0) {
        QFile::remove(fileOf(name));
        return;
    }
    QSaveFile file(fileOf(name));
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size())
        file.commit();
}

void SharedFiles::endListening()
{
    if (registration)
        registration->end();
}

QStringList SharedFiles::compare() const
{
    QStringList faults;
    for (const QString& backend : types()) {
        if (!repository->getBackendInterface()->getBackendInformation(backend)) {
            repository->getTreeInterface()->removeTree(backend); // what was made in its place
            mount(*repository, backend, 2);
        }
        if (!settle(backend)) {
            faults.append(QStringLiteral("'%1' could not be mounted and saved").arg(backend));
            continue;
        }
        repository->getBackendInterface()->reloadBackend(backend); // of others' writes, some may be news
        const auto other = Repository::AttributeRepository::create({false});
        const QStringList present = contentOf(*repository, backend);
        if (!mount(*other, backend, 2) || contentOf(*other, backend) != present)
            faults.append(QStringLiteral("'%1' holds\n%2\nbut its file\n%3")
                              .arg(backend, present.join(QLatin1Char('\n')),
                                   contentOf(*other, backend).join(QLatin1Char('\n'))));
    }
    return faults;
}

// Saves, when need be by giving the edits up.
bool SharedFiles::settle(const QString& backend) const
{
    const auto backends = repository->getBackendInterface();
    const auto changes = repository->getChangesInterface();
    if (backends->saveBackend(backend))
        return true;
    changes->resolveConflicts(backend, Interfaces::ConflictSide::Mine);
    if (backends->saveBackend(backend))
        return true;
    changes->resolveConflicts(backend, Interfaces::ConflictSide::Theirs);
    changes->revert(backend);
    return backends->saveBackend(backend);
}

QStringList SharedFiles::contentOf(RepositoryInterface& from, const QString& backend)
{
    QStringList lines;
    for (const QString& path : from.getTreeInterface()->findPaths({backend + QLatin1Char('*')})) {
        QVariant value;
        const bool isAttribute = from.getReaderInterface()->readAttributeValue(path, value, 0) == 0;
        lines.append(
            isAttribute
                ? QStringLiteral("%1 = %2 (%3)").arg(path, value.toString(), QLatin1String(value.typeName()))
                : path);
    }
    lines.sort();
    return lines;
}
