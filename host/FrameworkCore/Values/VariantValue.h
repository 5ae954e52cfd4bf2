#pragma once

#include "host/FrameworkCore/CoreExport.h"
#include "host/FrameworkCore/Values/ValueText.h"

#include <QVariant>

#include <optional>

namespace FrameworkCore::Values {

// Values as QVariants, and conversions between attribute types. Any thread.

// The type whose values such variants hold, by their QMetaType number; Null for any other.
VANTRY_CORE_EXPORT Type typeOf(int metaType);

// The value as an attribute type: bool, LongLong, ULongLong, Double, QString, QStringList, QByteArray, QDate,
// QTime, QDateTime, or invalid for null. Other integers, chars and enumerations become LongLong, or ULongLong
// above its range; float Double; QChar, QUrl and QUuid QString; a list of QStrings QStringList. Empty where
// that would lose something.
VANTRY_CORE_EXPORT std::optional<QVariant> toAttributeVariant(const QVariant& variant);

// The value as the attribute type of that QMetaType number; empty where that would lose something. An invalid
// variant gives the type's empty value.
// - Numbers (bool is 0 or 1) convert where the target has exactly that number.
// - A text becomes a number, bool, date or time by readText, and bytes as UTF-8; all become text by toText,
//   bytes only if they are UTF-8.
// - A text and the list of that one text convert into each other; no other list becomes text.
// - Dates, times and date-times do not convert into each other.
VANTRY_CORE_EXPORT std::optional<QVariant> convertVariant(const QVariant& variant, int metaType);

// Whether two attribute values have one type and are exactly the same: nearly equal numbers differ, and so do
// the texts of one moment in two time zones.
VANTRY_CORE_EXPORT bool isSameValue(const QVariant& a, const QVariant& b);

// What describeType says, the same with the range of whole numbers, and why a text is no value, in the
// language that is shown.
VANTRY_CORE_EXPORT QString typeText(Type type);
VANTRY_CORE_EXPORT QString rangeText(Type type);
VANTRY_CORE_EXPORT QString errorText(const ReadResult& refused);

// For attribute types only. A String that is not text gives a QByteArray, and as an element of a list its
// escapes. A date-time of a named time zone keeps the offset, not the name.
VANTRY_CORE_EXPORT Value toValue(const QVariant& variant);
VANTRY_CORE_EXPORT QVariant toVariant(const Value& value);

// Moved into the variant: a constructor would share the text, and counting its owners costs more than all the
// rest.
VANTRY_CORE_EXPORT QVariant holdingText(QString text);

} // namespace FrameworkCore::Values
