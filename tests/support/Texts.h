#pragma once

#include <QString>
#include <QStringList>

namespace TestSupport {

// Texts as tables of tests write them.

inline QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

// Words with blanks between them as a list.
inline QStringList words(const QString& listed)
{
    return listed.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}
inline QStringList words(const char* utf8)
{
    return words(text(utf8));
}

} // namespace TestSupport
