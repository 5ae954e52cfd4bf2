#pragma once

#include "host/FrameworkCore/CoreExport.h"
#include "host/FrameworkCore/Values/Value.h"

#include <QVariant>

#include <optional>

namespace FrameworkCore::Values {

// The QVariant side of values: every conversion between the two, and between the types of attributes. Any
// thread.

// The value as one of the attribute types (bool, LongLong, ULongLong, Double, QString, QStringList,
// QByteArray, QDate, QTime, QDateTime; an invalid variant is null), so that int, uint, short, float, char,
// QUrl and the like become theirs. Empty when the variant cannot become one of them without loss.
VANTRY_CORE_EXPORT std::optional<QVariant> toAttributeVariant(const QVariant& variant);

// The value converted to an attribute type, named by its QMetaType number; empty when something would be
// lost. An invalid variant gives the type's empty value.
VANTRY_CORE_EXPORT std::optional<QVariant> convertVariant(const QVariant& variant, int metaType);

// Between the two forms of an attribute's value; the variant must be of an attribute type.
VANTRY_CORE_EXPORT Value toValue(const QVariant& variant);
VANTRY_CORE_EXPORT QVariant toVariant(const Value& value);

} // namespace FrameworkCore::Values
