#include "cli/DocumentFile.h"

#include "cli/StandardInput.h"
#include "cli/Texts.h"
#include "files/FileSaver.h"
#include "repository/backends/FileFormat.h"
#include "repository/backends/FileKind.h"
#include "repository/documents/Formats.h"
#include "repository/fleet/EtcdLocation.h"

#include <optional>

namespace CommandLine {

DocumentFile DocumentFile::read(const QString& given, const QString& format)
{
    DocumentFile file;
    file.format = format;
    file.readBytes(given);
    if (!file.error.isEmpty())
        return file;
    auto document = Repository::Documents::makeDocument(file.format.toStdString());
    const auto outcome = document->parse(file.bytes);
    file.error = QString::fromStdString(outcome.error);
    file.hasPlace = outcome.line > 0;
    if (file.hasPlace)
        file.error.prepend(QStringLiteral("%1:%2: ").arg(outcome.line).arg(outcome.column));
    if (outcome.ok())
        file.document = std::move(document);
    return file;
}

void DocumentFile::readBytes(const QString& given)
{
    const bool isStandardInput = StandardInput::isMeant(given);
    name = isStandardInput ? StandardInput::name() : given;
    if (isStandardInput) {
        const StandardInput& input = StandardInput::read();
        bytes = input.bytes;
        error = input.error;
        format = format.isEmpty() ? input.format : format;
        if (format.isEmpty() && error.isEmpty())
            error = StandardInput::explainUnknown();
        return;
    }
    if (Repository::EtcdLocation::isMeant(given)) {
        name = Repository::EtcdLocation(given).toText();
        error = Texts::tr("it is a store, not a file");
        return;
    }
    error = Repository::refusalOfKind(given);
    if (!error.isEmpty())
        return;
    Files::ReadFileResult content = Files::FileSaver().read(given.toStdString());
    error = QString::fromStdString(content.reason);
    bytes = std::move(content.bytes);
    if (format.isEmpty())
        format = Repository::FileFormat::ofContent(given, bytes);
    if (format.isEmpty() && error.isEmpty())
        error = Repository::FileFormat::explainUnknown(given) + Texts::tr("; give its format");
}

QString DocumentFile::explain() const
{
    return name + (hasPlace ? QStringLiteral(":") : QStringLiteral(": ")) + error;
}

DocumentFile::Position DocumentFile::positionOf(const QString& entryPath) const
{
    const auto span = document ? document->locate(entryPath.toStdString()) : std::nullopt;
    if (!span)
        return {};
    const auto position = Repository::Documents::outcomeAt(bytes, span->offset);
    return {position.line, position.column};
}

} // namespace CommandLine
