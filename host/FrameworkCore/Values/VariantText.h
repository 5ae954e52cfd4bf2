#pragma once

#include "host/FrameworkCore/CoreExport.h"

#include <QDateTime>
#include <QString>

#include <optional>
#include <string>
#include <string_view>

namespace FrameworkCore::Values {

// The texts of Qt's types as values hold them, and back. Texts are UTF-8; a surrogate that lacks its other
// half, which UTF-8 has no form for, becomes the three bytes of its number, so that no text changes on the
// way.

bool hasLoneSurrogate(const QString& text);
std::string toBytes(const QString& text);

// Of UTF-8. A U+FEFF at its start stays, which QString::fromUtf8 takes for a mark of the encoding: in a value
// or a name it is a character.
VANTRY_CORE_EXPORT QString decodeUtf8(std::string_view bytes);

// Nothing for bytes that no text gives.
std::optional<QString> fromBytes(std::string_view bytes);

QString fromLatin(std::string_view text);

// ISO 8601, empty for what is not valid. A date-time of a named time zone keeps its offset, not the name.
std::string isoText(const QDate& date);
std::string isoText(const QTime& time);
std::string isoText(const QDateTime& dateTime);
QDate toDate(std::string_view iso);
QTime toTime(std::string_view iso);
QDateTime toDateTime(std::string_view iso);

} // namespace FrameworkCore::Values
