#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

// What the programs say that their files hold: the values of each key, in the order of the file, by
// "section|key" with what the program makes of their names.
namespace DialectReaders {

using Entries = QMap<QString, QStringList>;

// How a reader sees a file; nothing, and the failure of the running test, when the reader is missing.
using Reader = std::optional<Entries> (*)(const QString& file);

// Nothing, without a failure, where the reader refuses the file.
std::optional<Entries> git(const QString& file);
std::optional<Entries> krb5(const QString& file);
std::optional<Entries> python(const QString& file);          // without interpolation
std::optional<Entries> commentedPython(const QString& file); // with comments after values
std::optional<Entries> supervisor(const QString& file);
std::optional<Entries> interpolatingPython(const QString& file);
std::optional<Entries> glib(const QString& file);
std::optional<Entries> kconfig(const QString& file);
std::optional<Entries> php(const QString& file);
std::optional<Entries> rawPhp(const QString& file); // as values are spelled, but for quotes
std::optional<Entries> samba(const QString& file);
std::optional<Entries> mysql(const QString& file);

} // namespace DialectReaders
