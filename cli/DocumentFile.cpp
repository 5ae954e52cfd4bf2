#include "cli/DocumentFile.h"

#include "files/FileSaver.h"
#include "repository/backends/FileKind.h"
#include "repository/documents/Formats.h"

#include <optional>

namespace CommandLine {

DocumentFile DocumentFile::read(const QString& path, const QString& format)
{
    DocumentFile file;
    file.error = Repository::refusalOfKind(path);
    if (!file.error.isEmpty())
        return file;
    Files::ReadFileResult content = Files::FileSaver().read(path.toStdString());
    file.error = QString::fromStdString(content.reason);
    if (!content.ok())
        return file;
    file.bytes = std::move(content.bytes);
    auto document = Repository::Documents::makeDocument(format.toStdString());
    const auto outcome = document->parse(file.bytes);
    file.error = QString::fromStdString(outcome.error);
    file.hasPlace = outcome.line > 0;
    if (file.hasPlace)
        file.error.prepend(QStringLiteral("%1:%2: ").arg(outcome.line).arg(outcome.column));
    if (outcome.ok())
        file.document = std::move(document);
    return file;
}

QString DocumentFile::errorOf(const QString& given) const
{
    return given + (hasPlace ? QStringLiteral(":") : QStringLiteral(": ")) + error;
}

QString DocumentFile::positionOf(const QString& entryPath) const
{
    const auto span = document ? document->locate(entryPath.toStdString()) : std::nullopt;
    if (!span)
        return {};
    const auto position = Repository::Documents::outcomeAt(bytes, span->offset);
    return QStringLiteral(":%1:%2").arg(position.line).arg(position.column);
}

} // namespace CommandLine
