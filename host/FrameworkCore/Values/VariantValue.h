#pragma once

#include "host/FrameworkCore/CoreExport.h"
#include "host/FrameworkCore/Values/Value.h"

#include <QVariant>

#include <optional>

namespace FrameworkCore::Values {

// The QVariant side of values: every conversion between the two, and between the types of attributes. Any
// thread.

// The type whose values such variants hold, by their QMetaType number; Null for any other.
VANTRY_CORE_EXPORT Type typeOf(int metaType);

// The value as one of the attribute types (bool, LongLong, ULongLong, Double, QString, QStringList,
// QByteArray, QDate, QTime, QDateTime; an invalid variant is null). Other integers, chars and enumerations
// become LongLong, or ULongLong above its range; float Double; QChar, QUrl and QUuid a QString; a list of
// QStrings a QStringList. Empty when the variant cannot become one of them without loss.
VANTRY_CORE_EXPORT std::optional<QVariant> toAttributeVariant(const QVariant& variant);

// The value converted to an attribute type, named by its QMetaType number; empty when something would be
// lost. An invalid variant gives the type's empty value.
// - Numbers (bool counts as 0 and 1) convert where the other type has exactly this number.
// - A text becomes a number, bool, date or time by readText, bytes by its UTF-8; they become text by toText,
//   bytes only when they are UTF-8.
// - A text becomes the list of this one text, and a list of one text that text; no other list becomes text.
// - Dates, times and date-times do not become each other.
VANTRY_CORE_EXPORT std::optional<QVariant> convertVariant(const QVariant& variant, int metaType);

// Whether two values of attribute types are of one type and exactly the same, other than variants compare:
// numbers that are close to each other differ, and so do the texts of one moment in two time zones.
VANTRY_CORE_EXPORT bool isSameValue(const QVariant& a, const QVariant& b);

// Between the two forms of an attribute's value; the variant must be of an attribute type. A String whose
// bytes are no text gives a QByteArray, and such an element of a list its bytes in escapes. A date-time of a
// named time zone keeps its offset, not the name.
VANTRY_CORE_EXPORT Value toValue(const QVariant& variant);
VANTRY_CORE_EXPORT QVariant toVariant(const Value& value);

} // namespace FrameworkCore::Values
