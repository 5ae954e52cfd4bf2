#pragma once

#include "host/FrameworkCore/CoreExport.h"

#include <QDateTime>
#include <QString>

#include <optional>
#include <string>
#include <string_view>

namespace FrameworkCore::Values {

// Texts of Qt types as values hold them, in UTF-8, and back. A lone surrogate becomes the three bytes of its
// code, so that every text round-trips.

bool hasLoneSurrogate(const QString& text);
std::string toBytes(const QString& text);

// Keeps a leading U+FEFF, which QString::fromUtf8 drops as a byte-order mark.
VANTRY_CORE_EXPORT QString decodeUtf8(std::string_view bytes);

// Nothing for bytes that toBytes never gives.
std::optional<QString> fromBytes(std::string_view bytes);

QString fromLatin(std::string_view text);

// ISO 8601, empty for what is not valid. A date-time of a named time zone keeps its offset, not the name. Of
// the digits of a second, Qt types hold three; any others are cut off.
std::string isoText(const QDate& date);
std::string isoText(const QTime& time);
std::string isoText(const QDateTime& dateTime);
QDate toDate(std::string_view iso);
QTime toTime(std::string_view iso);
QDateTime toDateTime(std::string_view iso);

} // namespace FrameworkCore::Values
