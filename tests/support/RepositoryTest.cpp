#include "tests/support/RepositoryTest.h"

namespace TestSupport {

RepositoryTest::Outcome RepositoryTest::mount(const Name& type, const Name& name, const QByteArray& text,
                                              AccessMode access)
{
    return mountFile(type, name, put(name, text), access);
}

RepositoryTest::Outcome RepositoryTest::mountFile(const Name& type, const Name& name, const QString& file,
                                                  AccessMode access, int option)
{
    return backends()->mount(type, name, {file, QStringLiteral("for tests"), access}, option);
}

QByteArray RepositoryTest::saved(const Name& name)
{
    const Outcome outcome = save(name);
    return outcome.ok() ? contentOf(fileOf(name)) : outcome.toText().toUtf8();
}

QByteArray RepositoryTest::exported(const Name& path, const Name& type)
{
    QByteArray text;
    const Outcome outcome = transfer()->exportTree(path, type, text);
    return outcome.ok() ? text : outcome.toText().toUtf8();
}

QStringList RepositoryTest::content(const Name& beginning)
{
    QStringList lines;
    const QStringList found = paths(beginning + QLatin1Char('*'));
    for (const QString& path : found) {
        QVariant value;
        const bool isRead = repository->getReaderInterface()->readAttributeValue(path, value, 0) == 0;
        const auto node = tree()->getNodeInformation(path);
        // Names have "%2E", which no pattern must take for a place of its own.
        const QStringList fields{isRead ? value.toString() : QStringLiteral("-"), node.dataType,
                                 QString::number(int(node.accessMode)), QString::number(node.childCount)};
        lines.append(path.mid(beginning.size()) + QStringLiteral(" = ") + fields.join(QLatin1Char(' ')));
    }
    lines.sort();
    return lines;
}

QVariant RepositoryTest::read(const Name& path)
{
    QVariant value;
    repository->getReaderInterface()->readAttributeValue(path, value, 0);
    return value;
}

RepositoryTest::Outcome RepositoryTest::write(const Name& path, const QVariant& value, int points)
{
    return repository->getWriterInterface()->write(path, value, points);
}

RepositoryTest::Outcome RepositoryTest::create(const Name& path, const QVariant& value, int access,
                                               int option)
{
    return repository->getWriterInterface()->create(path, value, option, access);
}

void RepositoryTest::restart(const Repository::RepositoryOptions& options)
{
    repository = Repository::AttributeRepository::create(options);
}

void RepositoryTest::init()
{
    folder = std::make_unique<QTemporaryDir>();
    restart();
}

} // namespace TestSupport
