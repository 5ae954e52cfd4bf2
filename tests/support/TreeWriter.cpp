#include "tests/support/TreeWriter.h"

namespace TestSupport {

TreeWriter::TreeWriter(const std::shared_ptr<RepositoryInterface>& writtenRepository, const QString& root,
                       quint32 seed, int numberOfLetters, int longestPath)
    : repository(writtenRepository), prefix(root.isEmpty() ? root : root + QLatin1Char('.')), random(seed),
      letters(numberOfLetters), depth(longestPath)
{
}

QString TreeWriter::anyPath()
{
    QStringList names;
    const int length = random.bounded(1, depth + 1);
    for (int i = 0; i < length; ++i)
        names.append(QString(QLatin1Char(char('a' + random.bounded(letters)))));
    return prefix + names.join(QLatin1Char('.'));
}

void TreeWriter::changeOnce()
{
    const QString path = anyPath();
    const auto node = repository->getTreeInterface()->getNodeInformation(path);
    const int choice = random.bounded(100);
    if (choice < 25 && node.exists)
        repository->getTreeInterface()->removeTree(path);
    else if (choice < 70 && node.isAttribute)
        repository->getWriterInterface()->writeAttributeValue(path, random.bounded(1000), 8);
    else if (choice >= 70)
        repository->getWriterInterface()->createAttribute(path, random.bounded(1000), 3, 3);
}

} // namespace TestSupport
