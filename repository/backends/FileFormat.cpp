#include "repository/backends/FileFormat.h"

#include "repository/backends/FileKind.h"
#include "repository/documents/Formats.h"

#include <QFile>
#include <QFileInfo>

#include <string_view>

namespace Repository {

namespace {

// A second ending of the copies that editors and package managers leave.
constexpr std::string_view copyEndings =
    "bak old orig save dpkg-old dpkg-dist dpkg-new rpmsave rpmnew rpmorig";

bool lists(std::string_view endings, const QString& ending)
{
    return (' ' + std::string(endings) + ' ').find(' ' + ending.toStdString() + ' ') != std::string::npos;
}

QString endingOf(QString name)
{
    while (name.endsWith(QLatin1Char('~')))
        name.chop(1);
    const QString ending = QFileInfo(name).suffix().toLower();
    const bool isCopy = !ending.isEmpty() && lists(copyEndings, ending);
    return isCopy ? QFileInfo(name.left(name.size() - ending.size() - 1)).suffix().toLower() : ending;
}

using Endings = std::string_view (Documents::Format::*)() const;

// Null when no format has the ending.
const Documents::Format* formatByEnding(Endings endings, const QString& ending)
{
    for (const Documents::Format* format : Documents::getFormats()) {
        if (!ending.isEmpty() && lists((format->*endings)(), ending))
            return format;
    }
    return nullptr;
}

QString nameOf(const Documents::Format* format)
{
    return format ? QString::fromStdString(std::string(format->getName())) : QString();
}

// The text without its byte-order mark; of UTF-16 the characters that are ASCII, which all syntax is.
QByteArray withoutByteOrderMark(const QByteArray& bytes)
{
    if (bytes.startsWith("\xef\xbb\xbf"))
        return bytes.mid(3);
    const bool isLittle = bytes.startsWith("\xff\xfe");
    if (!isLittle && !bytes.startsWith("\xfe\xff"))
        return bytes;
    QByteArray text;
    for (int at = 2; at + 1 < bytes.size(); at += 2) {
        const char high = bytes.at(isLittle ? at + 1 : at);
        text.append(high == 0 ? bytes.at(isLittle ? at : at + 1) : '?');
    }
    return text;
}

const Documents::Format* formatByContent(const QByteArray& text)
{
    for (const Documents::Format* format : Documents::getFormats()) {
        if (format->begins(text.trimmed().toStdString()))
            return format;
    }
    return nullptr;
}

} // namespace

QString FileFormat::ofName(const QString& file)
{
    const QString ending = endingOf(file);
    const auto* certain = formatByEnding(&Documents::Format::getCertainEndings, ending);
    return nameOf(certain ? certain : formatByEnding(&Documents::Format::getLikelyEndings, ending));
}

QString FileFormat::ofContent(const QString& file, const QByteArray& bytes)
{
    const QString ending = endingOf(file);
    if (const auto* certain = formatByEnding(&Documents::Format::getCertainEndings, ending))
        return nameOf(certain);
    const QByteArray text = withoutByteOrderMark(bytes.left(enough));
    if (const auto* begun = formatByContent(text))
        return nameOf(begun);
    if (const auto* likely = formatByEnding(&Documents::Format::getLikelyEndings, ending))
        return nameOf(likely);
    return text.contains('\0') ? QString() : nameOf(&Documents::getDefaultFormat());
}

QString FileFormat::ofFile(const QString& file)
{
    QFile content(file);
    const bool isReadable = QFileInfo(file).isFile() && refusalOfKind(file).isEmpty() &&
                            content.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    return ofContent(file, isReadable ? content.read(enough) : QByteArray());
}

QString FileFormat::toRead(const QString& file)
{
    const QString format = ofFile(file);
    return format.isEmpty() ? QStringLiteral("txt") : format; // which refuses it with its place
}

QString FileFormat::explainMistaking(const QString& file, const QString& type, const std::string& before,
                                     const std::string& after)
{
    const auto typeOf = [&file](const std::string& text) {
        return ofContent(file, QByteArray::fromStdString(text.substr(0, enough)));
    };
    const QString taken = typeOf(after);
    if (taken == type || typeOf(before) != type)
        return {};
    return QStringLiteral(
               "with this text it would be taken for %1 when it is read again; give it a name that "
               "ends with .%2")
        .arg(taken.isEmpty() ? QStringLiteral("a binary file") : taken, type);
}

} // namespace Repository
