#include "desk/places/AttributeCopy.h"

#include "host/FrameworkCore/Values/ShellWord.h"
#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/backends/FileFormat.h"

#include <QStringList>

#include <algorithm>

namespace Vantry {

AttributeCopy::AttributeCopy(Repository& repository, const QString& attributePath) : path(attributePath)
{
    if (path.isEmpty())
        return;
    const auto attribute = repository.getReaderInterface()->getAttribute(path);
    isReadable = attribute && FrameworkCore::AppConfig::isReadable(attribute->getAccessMode());
    if (isReadable)
        value = QString::fromStdString(
            FrameworkCore::Values::toText(FrameworkCore::Values::toValue(attribute->getValue())));
    const auto tree = repository.getTreeInterface();
    backend = tree ? tree->getNodeInformation(path).backend : QString();
    const auto information = repository.getBackendInterface()->getBackendInformation(backend);
    if (backend.isEmpty() || !information)
        return;
    type = information->getBackendType();
    file = information->getBackendLocation();
}

QString AttributeCopy::getCommand() const
{
    if (file.isEmpty())
        return {};
    QStringList words{file, path.mid(backend.size() + 1)};
    if (isReadable)
        words.append(value);
    if (std::any_of(words.begin(), words.end(),
                    [](const QString& word) { return word.startsWith(QLatin1Char('-')); }))
        words.prepend(QStringLiteral("--"));
    if (::Repository::FileFormat::ofFile(file) != type && type != QLatin1String("folder"))
        words = QStringList{QStringLiteral("--format"), type} + words;
    words =
        QStringList{QStringLiteral("vantry"), isReadable ? QStringLiteral("set") : QStringLiteral("list")} +
        words;
    for (QString& word : words)
        word = QString::fromStdString(FrameworkCore::Values::shellWord(word.toStdString()));
    return words.join(QLatin1Char(' '));
}

} // namespace Vantry
