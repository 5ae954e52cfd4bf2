#include "host/Utilities/ModelViews/TextFile.h"

#include "files/FileSaver.h"
#include "host/FrameworkCore/Values/Utf8.h"
#include "host/Utilities/HostLog.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>

namespace Utilities::ModelViews {

namespace {

// What is translated here; a free tr() would be listed under another name than it is looked up by.
struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(Utilities::ModelViews::TextFile)
};

std::string nameOnDisk(const QString& name)
{
    return QFile::encodeName(name).toStdString();
}

void logWarning(const QString& name, const std::string& warning)
{
    if (!warning.empty())
        logFailure(name + QStringLiteral(": ") + QString::fromStdString(warning));
}

QString textError(const std::string& bytes)
{
    const std::string_view all(bytes);
    const std::size_t zero = all.find('\0');
    if (zero == std::string_view::npos && FrameworkCore::Values::isUtf8(all))
        return {};
    std::size_t wrong = 0;
    while (wrong < zero) {
        const std::size_t length = FrameworkCore::Values::utf8Length(all.substr(wrong));
        if (length == 0)
            break;
        wrong += length;
    }
    const auto line = 1 + std::count(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(wrong), '\n');
    return Texts::tr("it is not a text in UTF-8 (line %1)").arg(line);
}

QString unread(const QString& name, const QString& reason)
{
    return Texts::tr("%1 cannot be read: %2").arg(name, reason);
}

QString unsaved(const QString& name, const QString& reason)
{
    return Texts::tr("%1 is not saved: %2").arg(name, reason);
}

} // namespace

QString TextFile::read(const QString& name, QString& text)
{
    QByteArray bytes;
    QString error = readBytes(name, bytes);
    if (!error.isEmpty())
        return error;
    error = textError(bytes.toStdString());
    if (!error.isEmpty())
        return unread(name, error);
    bytes.replace("\r\n", "\n");
    text = QString::fromUtf8(bytes); // without a byte-order mark
    return {};
}

QString TextFile::readBytes(const QString& name, QByteArray& bytes)
{
    const Files::ReadFileResult file = Files::FileSaver().read(nameOnDisk(name));
    logWarning(name, file.warning);
    if (!file.ok())
        return unread(name, QString::fromStdString(file.reason));
    bytes = QByteArray::fromStdString(file.bytes);
    return {};
}

QString TextFile::write(const QString& name, const QString& text, Readers readers)
{
    if (!text.isValidUtf16())
        return unsaved(name, Texts::tr("the text has a character that UTF-8 cannot hold"));
    // Reading leaves out one byte-order mark, which must not be the text's own first character.
    const bool needsByteOrderMark = text.startsWith(QChar(QChar::ByteOrderMark));
    return writeBytes(name, needsByteOrderMark ? "\xEF\xBB\xBF" + text.toUtf8() : text.toUtf8(), readers);
}

QString TextFile::writeBytes(const QString& name, const QByteArray& bytes, Readers readers)
{
    const mode_t newFileMode = readers == Readers::OwnerOnly ? 0600 : 0666;
    const Files::SaveFileResult saved =
        Files::FileSaver().overwrite(nameOnDisk(name), bytes.toStdString(), newFileMode);
    logWarning(name, saved.warning);
    return saved.ok() ? QString() : unsaved(name, QString::fromStdString(saved.reason));
}

} // namespace Utilities::ModelViews
