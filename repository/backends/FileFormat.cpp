#include "repository/backends/FileFormat.h"

#include "repository/backends/FileKind.h"
#include "repository/common/Texts.h"
#include "repository/documents/Formats.h"

#include <QFile>

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace Repository {

namespace {

// A second ending of the copies that editors and package managers leave, and of models to copy.
constexpr std::string_view copyEndings =
    "bak old orig save dpkg-old dpkg-dist dpkg-new rpmsave rpmnew rpmorig example sample dist";

// Of sources and texts that may look like a format which is known here.
constexpr std::string_view foreignEndings =
    "md markdown rst tex license py sh bash zsh js mjs ts tsx jsx rb pl "
    "lua c h cc cpp cxx hpp go rs java kt cs php "
    "css scss html sql csv tsv log diff patch cmake mk gradle nix tf";

// Files of these begin like one of assignments, or are prose with lists.
constexpr std::string_view foreignNames = "makefile gnumakefile crontab authors bugs changelog changes "
                                          "copying copyright install license news readme thanks todo";

bool lists(std::string_view endings, std::string_view wanted)
{
    for (std::size_t at = endings.find(wanted); at < endings.size(); at = endings.find(wanted, at + 1)) {
        const std::size_t end = at + wanted.size();
        if ((at == 0 || endings[at - 1] == ' ') && (end == endings.size() || endings[end] == ' '))
            return true;
    }
    return false;
}

std::string_view endingOf(std::string_view name)
{
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string_view() : name.substr(dot + 1);
}

// The name in lower case that the file has, or the one of which it is a copy.
std::string nameIn(const QString& file)
{
    std::string name = file.mid(file.lastIndexOf(QLatin1Char('/')) + 1).toLower().toStdString();
    name.erase(name.find_last_not_of('~') + 1);
    const std::string_view ending = endingOf(name);
    if (!ending.empty() && lists(copyEndings, ending))
        name.erase(name.size() - ending.size() - 1);
    return name;
}

using Endings = std::string_view (Documents::Format::*)() const;

// Null when no format lists the ending or name.
const Documents::Format* findFormat(Endings endings, std::string_view ending)
{
    for (const Documents::Format* format : Documents::getFormats()) {
        if (!ending.empty() && lists((format->*endings)(), ending))
            return format;
    }
    return nullptr;
}

// The format that decides by a name: that of the file, with or without its folder, or of the file to which it
// adds, as "name.d/file" does.
const Documents::Format* formatByName(const QString& file)
{
    const std::string name = nameIn(file);
    const QString parent = file.left(std::max(file.lastIndexOf(QLatin1Char('/')), 0));
    const std::string folder = parent.mid(parent.lastIndexOf(QLatin1Char('/')) + 1).toLower().toStdString();
    constexpr auto names = &Documents::Format::getFileNames;
    const auto* found = findFormat(names, name);
    if (!found)
        found = findFormat(names, folder + '/' + name);
    if (!found && endingOf(folder) == "d" && endingOf(folder.substr(0, folder.size() - 2)) == endingOf(name))
        found = findFormat(names, folder.substr(0, folder.size() - 2));
    return found;
}

// What the name of a file tells: its format for certain, or which one is likely.
struct FileName
{
    explicit FileName(const QString& path) : file(path.toStdString())
    {
        const std::string name = nameIn(path);
        const auto* const byName = formatByName(path);
        const std::string_view ending = endingOf(name);
        certain = byName ? byName : findFormat(&Documents::Format::getCertainEndings, ending);
        if (!certain)
            likely = findFormat(&Documents::Format::getLikelyEndings, ending);
        isForeign = lists(ending.empty() ? foreignNames : foreignEndings, ending.empty() ? name : ending);
    }

    const std::string file;                     // its path
    const Documents::Format* certain = nullptr; // null when none is
    const Documents::Format* likely = nullptr;
    bool isForeign = false;
};

QString nameOf(const Documents::Format* format)
{
    return format ? QString::fromStdString(std::string(format->getName())) : QString();
}

// Its dialect is that which the path says, or else the text.
QString typeOf(const Documents::Format& format, const FileName& name, std::string_view text)
{
    return QString::fromStdString(Documents::recogniseDialect(format.getName(), name.file, text));
}

// The text without its byte-order mark; of UTF-16 the characters that are ASCII, which all syntax is.
std::string withoutByteOrderMark(std::string_view bytes)
{
    if (bytes.substr(0, 3) == "\xef\xbb\xbf")
        return std::string(bytes.substr(3));
    const bool isLittle = bytes.substr(0, 2) == "\xff\xfe";
    if (!isLittle && bytes.substr(0, 2) != "\xfe\xff")
        return std::string(bytes);
    std::string text;
    for (std::size_t at = 2; at + 1 < bytes.size(); at += 2) {
        const char high = bytes[isLittle ? at + 1 : at];
        text += high == 0 ? bytes[isLittle ? at : at + 1] : '?';
    }
    return text;
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\n\v\f\r";
    const std::size_t begin = std::min(text.find_first_not_of(blanks), text.size());
    return text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

const Documents::Format* formatByContent(std::string_view text)
{
    const std::string_view content = trimmed(text);
    for (const Documents::Format* format : Documents::getFormats()) {
        if (format->begins(content))
            return format;
    }
    return nullptr;
}

// Null when none takes a text for its own, by what it claims or what suits it.
const Documents::Format* formatThat(bool (Documents::Format::*takes)(std::string_view) const,
                                    std::string_view text)
{
    const auto& formats = Documents::getFormats();
    const auto found = std::find_if(formats.begin(), formats.end(),
                                    [=](const auto* format) { return (format->*takes)(text); });
    return found == formats.end() ? nullptr : *found;
}

bool isBinary(std::string_view text)
{
    return text.find('\0') != std::string_view::npos;
}

// Whether a change of a file is in it, as diff writes it, whose lines may be those of any format.
bool isDiff(std::string_view text)
{
    constexpr std::string_view newName = "\n+++ ";
    for (std::size_t at = text.find(newName); at < text.size(); at = text.find(newName, at + 1)) {
        const std::string_view before = text.substr(0, at);
        if (before.substr(before.rfind('\n') + 1, 4) == "--- ")
            return true;
    }
    return false;
}

// Of a file whose name tells nothing.
QString typeByText(std::string_view text)
{
    if (isBinary(text))
        return {};
    const std::string known = Documents::typeByText(text);
    if (!known.empty() && !Documents::findFormat(known)->rulesOut(text))
        return QString::fromStdString(known);
    for (const Documents::Format* format : Documents::getFormats()) {
        if (format->resembles(text))
            return nameOf(format);
    }
    return {};
}

// What decides of a file's bytes: as text, without a line that is cut off.
std::string decisiveText(std::string_view bytes, std::size_t most)
{
    const std::string_view text = bytes.substr(0, most);
    const std::size_t end = bytes.size() < most ? std::string_view::npos : text.find_last_of("\r\n");
    return withoutByteOrderMark(end == std::string_view::npos ? text : text.substr(0, end + 1));
}

QString typeOf(const FileName& name, std::string_view text)
{
    if (name.certain)
        return typeOf(*name.certain, name, text);
    if (const auto* begun = formatByContent(text))
        return nameOf(begun);
    const std::string dialect = Documents::typeByName(name.file);
    if (!dialect.empty())
        return QString::fromStdString(dialect);
    const bool isForeign = name.isForeign || isDiff(text);
    if (const auto* claiming = isForeign ? nullptr : formatThat(&Documents::Format::claims, text))
        return nameOf(claiming);
    const bool isOfDialect = isForeign || !Documents::typeByText(text).empty();
    if (const auto* suiting = isOfDialect ? nullptr : formatThat(&Documents::Format::suits, text))
        return nameOf(suiting);
    if (name.likely && name.likely->rulesOut(text))
        return {};
    if (name.likely)
        return typeOf(*name.likely, name, text);
    return isForeign ? QString() : typeByText(text);
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

std::string_view viewOf(const QByteArray& bytes)
{
    return {bytes.constData(), std::size_t(bytes.size())};
}

} // namespace

QString FileFormat::ofName(const QString& file)
{
    const FileName name(file);
    if (name.certain)
        return typeOf(*name.certain, name, {});
    const QString dialect = QString::fromStdString(Documents::typeByName(name.file));
    return dialect.isEmpty() ? nameOf(name.likely) : dialect;
}

QString FileFormat::ofContent(const QString& file, std::string_view bytes)
{
    return typeOf(FileName(file), decisiveText(bytes, enough));
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
    return ofContent(file, viewOf(beginningOf(file)));
}

QString FileFormat::ofUnchosenFile(const QString& file)
{
    return ofUnchosenContent(file, viewOf(beginningOf(file)));
}

QString FileFormat::ofUnchosenContent(const QString& file, std::string_view bytes)
{
    const FileName name(file);
    const std::string text = decisiveText(bytes, enough);
    const QString type = isBinary(text) ? QString() : typeOf(name, text);
    const bool isDoubtful =
        name.likely && formatOf(type) == nameOf(name.likely) && !name.likely->begins(trimmed(text));
    const bool isOther = isDoubtful && !Documents::makeDocument(type.toStdString())->parse(text).ok();
    return isOther ? QString() : type;
}

QString FileFormat::explainUnknown(const QString& file)
{
    return beginningOf(file).contains('\0')
               ? Texts::tr("it is a binary file")
               : Texts::tr("neither its name nor how it begins tells that it is of a format known here");
}

QString FileFormat::withDialect(const QString& type, const QString& file, std::string_view text)
{
    return QString::fromStdString(
        Documents::recogniseDialect(type.toStdString(), file.toStdString(), decisiveText(text, enough)));
}

bool FileFormat::tells(const QString& file, const QString& type, const std::string& text)
{
    return ofContent(file, text) == type;
}

QString FileFormat::explainMistaking(const QString& file, const QString& type, const std::string& text)
{
    const QString taken = ofContent(file, text);
    if (taken == type)
        return {};
    const bool isDialect = formatOf(taken) == formatOf(type);
    const auto* const suiting = Documents::findFormat(taken.toStdString());
    const bool isDoubtful = suiting && suiting->suits(decisiveText(text, enough));
    if ((isDialect || isDoubtful) && readAlike(taken, type, text))
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
