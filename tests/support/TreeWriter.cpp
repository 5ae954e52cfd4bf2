#include "tests/support/TreeWriter.h"

namespace TestSupport {

namespace {

QString nameAt(int number)
{
    constexpr int letters = 26;
    const QString letter(QLatin1Char(char('a' + number % letters)));
    return number < letters ? letter : letter + QString::number(number / letters);
}

} // namespace

TreeWriter::TreeWriter(const std::shared_ptr<RepositoryInterface>& writtenRepository, const QString& root,
                       quint32 seed, int numberOfNames, int longestPath)
    : repository(writtenRepository), prefix(root.isEmpty() ? root : root + QLatin1Char('.')), random(seed),
      nameCount(numberOfNames), depth(longestPath)
{
}

QString TreeWriter::anyPath()
{
    QStringList names;
    const int length = random.bounded(1, depth + 1);
    for (int i = 0; i < length; ++i)
        names.append(nameAt(random.bounded(nameCount)));
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
