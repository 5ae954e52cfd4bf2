#include "repository/backends/FileFormat.h"

#include "repository/backends/FileKind.h"
#include "repository/common/Texts.h"
#include "repository/documents/Formats.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace Repository {

namespace {

// A second ending of the copies that editors and package managers leave.
constexpr std::string_view copyEndings =
    "bak old orig save dpkg-old dpkg-dist dpkg-new rpmsave rpmnew rpmorig";

// Of sources and texts that may look like a format which is known here.
constexpr std::string_view foreignEndings = "md rst tex py sh bash zsh js mjs ts tsx jsx rb pl "
                                            "lua c h cc cpp cxx hpp go rs java kt cs php "
                                            "css scss html sql csv tsv log diff patch cmake mk gradle nix tf";

bool lists(std::string_view endings, const QString& ending)
{
    const std::string wanted = ending.toStdString();
    for (std::size_t at = endings.find(wanted); at < endings.size(); at = endings.find(wanted, at + 1)) {
        const std::size_t end = at + wanted.size();
        if ((at == 0 || endings[at - 1] == ' ') && (end == endings.size() || endings[end] == ' '))
            return true;
    }
    return false;
}

// The name in lower case that the file has, or the one of which it is a copy.
QString nameIn(const QString& file)
{
    QString name = QFileInfo(file).fileName().toLower();
    while (name.endsWith(QLatin1Char('~')))
        name.chop(1);
    const QString ending = QFileInfo(name).suffix();
    const bool isCopy = !ending.isEmpty() && lists(copyEndings, ending);
    return isCopy ? name.left(name.size() - ending.size() - 1) : name;
}

QString endingOf(const QString& file)
{
    return QFileInfo(nameIn(file)).suffix();
}

using Endings = std::string_view (Documents::Format::*)() const;

// Null when no format lists the ending or name.
const Documents::Format* findFormat(Endings endings, const QString& ending)
{
    for (const Documents::Format* format : Documents::getFormats()) {
        if (!ending.isEmpty() && lists((format->*endings)(), ending))
            return format;
    }
    return nullptr;
}

const Documents::Format* certainFormat(const QString& file)
{
    const auto* byName = findFormat(&Documents::Format::getFileNames, nameIn(file));
    return byName ? byName : findFormat(&Documents::Format::getCertainEndings, endingOf(file));
}

QString nameOf(const Documents::Format* format)
{
    return format ? QString::fromStdString(std::string(format->getName())) : QString();
}

// Its dialect is that which the path says, or else the text.
QString typeOf(const Documents::Format& format, const QString& file, const QByteArray& text)
{
    return QString::fromStdString(
        Documents::recogniseDialect(format.getName(), file.toStdString(), text.toStdString()));
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

// Of a file whose name tells nothing.
QString typeByText(const QByteArray& text)
{
    const std::string known = text.contains('\0') ? std::string() : Documents::typeByText(text.toStdString());
    if (!known.empty() || text.contains('\0'))
        return QString::fromStdString(known);
    for (const Documents::Format* format : Documents::getFormats()) {
        if (format->resembles(text.toStdString()))
            return nameOf(format);
    }
    return {};
}

// Without a line that is cut off.
QByteArray wholeLines(const QByteArray& bytes, int most)
{
    const QByteArray text = bytes.left(most);
    const int end = bytes.size() < most ? -1 : std::max(text.lastIndexOf('\n'), text.lastIndexOf('\r'));
    return end < 0 ? text : text.left(end + 1);
}

// Whether both types read the same in a text.
bool readAlike(const QString& type, const QString& other, const std::string& text)
{
    const auto entriesOf = [&text](const QString& documentType) {
        std::vector<std::pair<std::string, Documents::Value>> entries;
        const auto document = Documents::makeDocument(documentType.toStdString());
        if (document && document->parse(text).ok())
            document->visit([&](const auto& entry) { entries.emplace_back(entry.path, entry.value); });
        return entries;
    };
    return entriesOf(type) == entriesOf(other);
}

QString formatOf(const QString& type)
{
    return QString::fromStdString(std::string(Documents::formatOf(type.toStdString())));
}

} // namespace

QString FileFormat::ofName(const QString& file)
{
    if (const auto* certain = certainFormat(file))
        return typeOf(*certain, file, {});
    const QString dialect = QString::fromStdString(Documents::typeByName(file.toStdString()));
    return dialect.isEmpty() ? nameOf(findFormat(&Documents::Format::getLikelyEndings, endingOf(file)))
                             : dialect;
}

QString FileFormat::ofContent(const QString& file, const QByteArray& bytes)
{
    const QString ending = endingOf(file);
    const QByteArray text = withoutByteOrderMark(wholeLines(bytes, enough));
    if (const auto* certain = certainFormat(file))
        return typeOf(*certain, file, text);
    if (const auto* begun = formatByContent(text))
        return nameOf(begun);
    const std::string dialect = Documents::typeByName(file.toStdString());
    if (!dialect.empty())
        return QString::fromStdString(dialect);
    if (const auto* likely = findFormat(&Documents::Format::getLikelyEndings, ending))
        return typeOf(*likely, file, text);
    return !ending.isEmpty() && lists(foreignEndings, ending) ? QString() : typeByText(text);
}

QString FileFormat::ofText(const QString& file, const std::string& text)
{
    return ofContent(file, QByteArray::fromStdString(text.substr(0, enough)));
}

// Empty for what cannot be read.
QByteArray FileFormat::beginningOf(const QString& file)
{
    QFile content(file);
    const bool isReadable =
        refusalOfKind(file).isEmpty() && content.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    const qint64 size = isReadable ? content.size() : 0; // which files of the kernel do not tell
    return isReadable ? content.read(size > 0 ? std::min<qint64>(enough, size) : enough) : QByteArray();
}

QString FileFormat::ofFile(const QString& file)
{
    return ofContent(file, beginningOf(file));
}

QString FileFormat::ofUnchosenFile(const QString& file)
{
    const QByteArray beginning = beginningOf(file);
    const QByteArray text = withoutByteOrderMark(wholeLines(beginning, enough));
    const QString type = text.contains('\0') ? QString() : ofContent(file, beginning);
    const auto* const likely =
        certainFormat(file) ? nullptr : findFormat(&Documents::Format::getLikelyEndings, endingOf(file));
    const bool isDoubtful =
        likely && formatOf(type) == nameOf(likely) && !likely->begins(text.trimmed().toStdString());
    const bool isOther =
        isDoubtful && !Documents::makeDocument(type.toStdString())->parse(text.toStdString()).ok();
    return isOther ? QString() : type;
}

QString FileFormat::explainUnknown(const QString& file)
{
    return beginningOf(file).contains('\0')
               ? Texts::tr("it is a binary file")
               : Texts::tr("neither its name nor how it begins tells that it is of a format known here");
}

QString FileFormat::withDialect(const QString& type, const QString& file, const std::string& text)
{
    const QByteArray beginning = QByteArray::fromStdString(text.substr(0, enough));
    return QString::fromStdString(
        Documents::recogniseDialect(type.toStdString(), file.toStdString(),
                                    withoutByteOrderMark(wholeLines(beginning, enough)).toStdString()));
}

bool FileFormat::tells(const QString& file, const QString& type, const std::string& text)
{
    return ofText(file, text) == type;
}

QString FileFormat::explainMistaking(const QString& file, const QString& type, const std::string& text)
{
    const QString taken = ofText(file, text);
    if (taken == type)
        return {};
    const bool isDialect = formatOf(taken) == formatOf(type);
    if (isDialect && readAlike(taken, type, text))
        return {};
    const QString form =
        isDialect ? Texts::tr("with this text it would be taken for %1 when it is read again; give it "
                              "a name that tells that it is %2")
                  : Texts::tr("with this text it would be taken for %1 when it is read again; give it "
                              "a name that ends with .%2");
    return form.arg(taken.isEmpty() ? Texts::tr("a file of another kind") : taken,
                    isDialect ? type : formatOf(type));
}

} // namespace Repository
