#include "repository/FileFormat.h"

#include "repository/FileKind.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace Repository {

namespace {

struct NameRule
{
    const char* type = nullptr;    // null when the name tells nothing
    const char* endings = nullptr; // with a blank before and behind each
};

constexpr NameRule certainRules[] = {
    {"json", " json jsonc "},
    {"ini", " ini "},
    {"xml", " xml "},
    {"txt", " txt properties "},
};

constexpr NameRule likelyRules[] = {
    {"ini", " conf cfg cnf cf config rc desktop directory theme colors repo editorconfig gitconfig npmrc "
            " service socket timer target mount automount swap path slice scope link netdev network nspawn "},
    {"xml", " svg ui ts pom qrc kcfg xbel docbook policy plist xsd xsl xslt rng xhtml csproj "},
    {"json", " geojson webmanifest jshintrc eslintrc babelrc "},
};

// A second ending of the copies that editors and package managers leave.
constexpr const char* copyEndings = " bak old orig save dpkg-old dpkg-dist dpkg-new rpmsave rpmnew rpmorig ";

bool lists(const char* endings, const QString& ending)
{
    return QByteArray(endings).contains((QLatin1Char(' ') + ending + QLatin1Char(' ')).toUtf8());
}

QString endingOf(QString name)
{
    while (name.endsWith(QLatin1Char('~')))
        name.chop(1);
    const QString ending = QFileInfo(name).suffix().toLower();
    const bool isCopy = !ending.isEmpty() && lists(copyEndings, ending);
    return isCopy ? QFileInfo(name.left(name.size() - ending.size() - 1)).suffix().toLower() : ending;
}

template <std::size_t count>
QString typeByEnding(const NameRule (&rules)[count], const QString& ending)
{
    for (const NameRule& rule : rules) {
        if (!ending.isEmpty() && lists(rule.endings, ending))
            return QLatin1String(rule.type);
    }
    return {};
}

// The text without its byte order mark; of UTF-16 the characters that are ASCII, which all syntax is.
QByteArray withoutMark(const QByteArray& bytes)
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

// What follows the blanks and the comments that json may have.
QByteArray behindComments(QByteArray text)
{
    for (text = text.trimmed(); text.startsWith("//") || text.startsWith("/*"); text = text.trimmed()) {
        const bool isLine = text.startsWith("//");
        const int end = isLine ? text.indexOf('\n') : text.indexOf("*/", 2);
        if (end < 0)
            return {};
        text.remove(0, isLine ? end : end + 2);
    }
    return text;
}

// Some line formats have sections in angle brackets, too, but those are no tags.
bool beginsLikeXml(const QByteArray& text)
{
    static const QRegularExpression tag(
        QStringLiteral("\\A<(?:[?!]|[A-Za-z_][\\w:.-]*\\s*(?:/?>|[A-Za-z_][\\w:.-]*\\s*=))"));
    return tag.match(QString::fromLatin1(text)).hasMatch();
}

// An array; a section of an ini file has its name right behind the bracket.
bool beginsLikeArray(const QByteArray& text)
{
    static const QRegularExpression array(QStringLiteral("\\A\\[(?:\\s*[\\[{\"]|\\s*\\n|\\s*\\]\\s*\\z)"));
    return array.match(QString::fromLatin1(text)).hasMatch();
}

QString typeByContent(const QByteArray& text)
{
    if (beginsLikeXml(text))
        return QStringLiteral("xml");
    return text.startsWith('{') || beginsLikeArray(text) ? QStringLiteral("json") : QString();
}

} // namespace

QString FileFormat::ofName(const QString& file)
{
    const QString ending = endingOf(file);
    const QString type = typeByEnding(certainRules, ending);
    return type.isEmpty() ? typeByEnding(likelyRules, ending) : type;
}

QString FileFormat::ofContent(const QString& file, const QByteArray& bytes)
{
    const QString ending = endingOf(file);
    const QString certain = typeByEnding(certainRules, ending);
    if (!certain.isEmpty())
        return certain;
    const QString likely = typeByEnding(likelyRules, ending);
    const QByteArray text = withoutMark(bytes.left(enough));
    const QString type = typeByContent(behindComments(text));
    if (!type.isEmpty() || !likely.isEmpty())
        return type.isEmpty() ? likely : type;
    return text.contains('\0') ? QString() : QStringLiteral("ini");
}

QString FileFormat::ofFile(const QString& file)
{
    QFile content(file);
    const bool isReadable = QFileInfo(file).isFile() && refusalOfKind(file).isEmpty() &&
                            content.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    return ofContent(file, isReadable ? content.read(enough) : QByteArray());
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
