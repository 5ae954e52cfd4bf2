#pragma once

#include <QByteArray>
#include <QMap>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

// What an edit of a file's structure has to keep: its lines and its comments, and the parts of paths.
namespace FileLines {

// Lines as they compare for a person: without indentation, and in json without the comma before or after
// them.
inline QStringList linesOf(const QByteArray& bytes)
{
    static const QRegularExpression ends(QStringLiteral("\r\n|\r|\n"));
    static const QRegularExpression commaBeforeComment(QStringLiteral(",(?=\\s*(//|/\\*))"));
    QStringList lines;
    for (const QString& line : QString::fromUtf8(bytes).split(ends)) {
        QString plain = line.trimmed();
        plain.remove(commaBeforeComment);
        if (plain.endsWith(QLatin1Char(',')))
            plain.chop(1);
        else if (plain.startsWith(QLatin1Char(',')))
            plain.remove(0, 1);
        lines += plain.trimmed();
    }
    return lines;
}

inline QMap<QString, int> countsOf(const QStringList& lines)
{
    QMap<QString, int> counts;
    for (const QString& line : lines)
        counts[line] += line.isEmpty() ? 0 : 1;
    return counts;
}

// The lines that the second text has less often.
inline QStringList lost(const QByteArray& before, const QByteArray& after)
{
    QStringList gone;
    QMap<QString, int> present = countsOf(linesOf(after));
    for (const QString& line : linesOf(before)) {
        if (!line.isEmpty() && --present[line] < 0)
            gone += line;
    }
    return gone;
}

inline QStringList commentsIn(const QByteArray& bytes, const QString& type)
{
    static const QMap<QString, QString> forms{
        {QStringLiteral("ini"), QStringLiteral("^[ \t]*[;#].*$")},
        {QStringLiteral("txt"), QStringLiteral("^[ \t]*[#!].*$")},
        {QStringLiteral("toml"), QStringLiteral("^[ \t]*#.*$")},
        {QStringLiteral("yaml"), QStringLiteral("^[ \t]*#.*$")},
        {QStringLiteral("json"), QStringLiteral("(^|[ \t])//.*$|/\\*[^\"]*?\\*/")},
        {QStringLiteral("xml"), QStringLiteral("<!--.*?-->|<\\?(?!xml |vantry ).*?\\?>")}};
    const auto options =
        type == QLatin1String("xml") || type == QLatin1String("json")
            ? QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption
            : QRegularExpression::MultilineOption;
    QStringList comments;
    auto found =
        QRegularExpression(forms[type],
                           type == QLatin1String("json") ? QRegularExpression::MultilineOption : options)
            .globalMatch(QString::fromUtf8(bytes));
    while (found.hasNext())
        comments += found.next().captured().simplified();
    return comments;
}

inline QString lastOf(const QString& path)
{
    return path.mid(path.lastIndexOf(QLatin1Char('.')) + 1);
}

inline QString above(const QString& path)
{
    return path.left(std::max(path.lastIndexOf(QLatin1Char('.')), 0));
}

} // namespace FileLines
