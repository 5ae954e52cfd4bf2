#include "host/FrameworkCore/Values/VariantValue.h"

#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantText.h"

#include <QDateTime>
#include <QStringList>
#include <QUrl>
#include <QUuid>

#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>

namespace FrameworkCore::Values {

namespace {

struct Number
{
    enum class Kind { None, Bool, Signed, Unsigned, Real };

    Kind kind = Kind::None;
    qlonglong asSigned = 0;
    qulonglong asUnsigned = 0;
    double asReal = 0;
};

Number numberIn(const QVariant& variant)
{
    Number number;
    switch (variant.userType()) {
    case QMetaType::Bool:
        number.kind = Number::Kind::Bool;
        number.asSigned = variant.toBool() ? 1 : 0;
        break;
    case QMetaType::Int: // nearly all numbers, and quicker when the type is named
        number.kind = Number::Kind::Signed;
        number.asSigned = variant.value<int>();
        break;
    case QMetaType::LongLong:
        number.kind = Number::Kind::Signed;
        number.asSigned = variant.value<qlonglong>();
        break;
    case QMetaType::Long:
    case QMetaType::Short:
    case QMetaType::Char:
    case QMetaType::SChar:
        number.kind = Number::Kind::Signed;
        number.asSigned = variant.toLongLong();
        break;
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
    case QMetaType::UShort:
    case QMetaType::UChar:
        number.kind = Number::Kind::Unsigned;
        number.asUnsigned = variant.toULongLong();
        break;
    case QMetaType::Float:
    case QMetaType::Double:
        number.kind = Number::Kind::Real;
        number.asReal = variant.toDouble();
        break;
    default:
        if (QMetaType::typeFlags(variant.userType()) & QMetaType::IsEnumeration) {
            number.kind = Number::Kind::Signed;
            number.asSigned = variant.toLongLong();
        }
    }
    return number;
}

// The integer that the double is exactly, when the type has it. The bound itself is a power of two, so that
// the double of the comparison is exact.
template <typename Integer>
std::optional<QVariant> exactInteger(double real)
{
    constexpr double bound = std::is_signed_v<Integer> ? 9223372036854775808.0 : 18446744073709551616.0;
    const double least = std::is_signed_v<Integer> ? -bound : 0.0;
    if (!(real >= least && real < bound) || std::trunc(real) != real)
        return std::nullopt;
    return QVariant(static_cast<Integer>(real));
}

std::optional<QVariant> parsed(const QVariant& text, Type type)
{
    const ReadResult result = readText(toBytes(text.toString()), type);
    if (!result.ok())
        return std::nullopt;
    return toVariant(result.value);
}

std::optional<QVariant> toSigned(const QVariant& variant)
{
    const Number number = numberIn(variant);
    switch (number.kind) {
    case Number::Kind::Bool:
    case Number::Kind::Signed:
        return QVariant(number.asSigned);
    case Number::Kind::Unsigned:
        if (number.asUnsigned > qulonglong(std::numeric_limits<qlonglong>::max()))
            return std::nullopt;
        return QVariant(qlonglong(number.asUnsigned));
    case Number::Kind::Real:
        return exactInteger<qlonglong>(number.asReal);
    case Number::Kind::None:
        break;
    }
    if (variant.userType() == QMetaType::QString)
        return parsed(variant, Type::Integer);
    return std::nullopt;
}

std::optional<QVariant> toUnsigned(const QVariant& variant)
{
    const Number number = numberIn(variant);
    switch (number.kind) {
    case Number::Kind::Bool:
    case Number::Kind::Signed:
        if (number.asSigned < 0)
            return std::nullopt;
        return QVariant(qulonglong(number.asSigned));
    case Number::Kind::Unsigned:
        return QVariant(number.asUnsigned);
    case Number::Kind::Real:
        return exactInteger<qulonglong>(number.asReal);
    case Number::Kind::None:
        break;
    }
    if (variant.userType() == QMetaType::QString)
        return parsed(variant, Type::Unsigned);
    return std::nullopt;
}

std::optional<QVariant> toReal(const QVariant& variant)
{
    const Number number = numberIn(variant);
    switch (number.kind) {
    case Number::Kind::Bool:
    case Number::Kind::Signed:
        if (!isExactDouble(std::int64_t(number.asSigned)))
            return std::nullopt;
        return QVariant(double(number.asSigned));
    case Number::Kind::Unsigned:
        if (!isExactDouble(std::uint64_t(number.asUnsigned)))
            return std::nullopt;
        return QVariant(double(number.asUnsigned));
    case Number::Kind::Real:
        return QVariant(number.asReal);
    case Number::Kind::None:
        break;
    }
    if (variant.userType() == QMetaType::QString)
        return parsed(variant, Type::Double);
    return std::nullopt;
}

std::optional<QVariant> toBool(const QVariant& variant)
{
    if (variant.userType() == QMetaType::QString)
        return parsed(variant, Type::Bool);
    const std::optional<QVariant> integer = toSigned(variant);
    if (!integer || integer->toULongLong() > 1)
        return std::nullopt;
    return QVariant(integer->toLongLong() == 1);
}

// The text is moved into the variant, whose constructors would only share it: counting its owners up and down
// again costs more than all the rest of it.
QVariant holdingText(QString text)
{
    QVariant variant{QString()};
    static_cast<QString*>(variant.data())->swap(text);
    return variant;
}

// The standard library writes the digits straight away, QString::number by way of a locale's rules.
template <typename Integer>
QVariant holdingNumber(Integer number)
{
    char digits[std::numeric_limits<Integer>::digits10 + 2]; // of the longest one, and a sign
    const std::to_chars_result written = std::to_chars(std::begin(digits), std::end(digits), number);
    return holdingText(QString::fromLatin1(digits, int(written.ptr - digits)));
}

std::optional<QVariant> toStringVariant(const QVariant& variant)
{
    const Number number = numberIn(variant);
    switch (number.kind) {
    case Number::Kind::Bool:
        return QVariant(number.asSigned == 1 ? QStringLiteral("true") : QStringLiteral("false"));
    case Number::Kind::Signed:
        return holdingNumber(number.asSigned);
    case Number::Kind::Unsigned:
        return holdingNumber(number.asUnsigned);
    case Number::Kind::Real:
        return holdingText(fromLatin(toText(Value{Type::Double, number.asReal})));
    case Number::Kind::None:
        break;
    }
    switch (variant.userType()) {
    case QMetaType::QChar:
        return QVariant(QString(variant.toChar()));
    case QMetaType::QUrl:
        return QVariant(variant.toUrl().toString(QUrl::FullyEncoded));
    case QMetaType::QUuid:
        return QVariant(variant.toUuid().toString());
    case QMetaType::QDate:
    case QMetaType::QTime:
    case QMetaType::QDateTime:
        return QVariant(fromLatin(toText(toValue(variant))));
    case QMetaType::QByteArray: {
        const QByteArray bytes = variant.toByteArray();
        const std::optional<QString> text = fromBytes({bytes.constData(), std::size_t(bytes.size())});
        return text && !hasLoneSurrogate(*text) ? std::optional<QVariant>(*text) : std::nullopt;
    }
    case QMetaType::QStringList: {
        const QStringList list = variant.toStringList();
        return list.size() == 1 ? std::optional<QVariant>(list.front()) : std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

std::optional<QVariant> toListVariant(const QVariant& variant)
{
    if (variant.userType() == QMetaType::QString)
        return QVariant(QStringList(variant.toString()));
    if (variant.userType() != QMetaType::QVariantList)
        return std::nullopt;
    QStringList list;
    const QVariantList elements = variant.toList();
    for (const QVariant& element : elements) {
        if (element.userType() != QMetaType::QString)
            return std::nullopt;
        list << element.toString();
    }
    return QVariant(list);
}

std::optional<QVariant> toBytesVariant(const QVariant& variant)
{
    if (variant.userType() != QMetaType::QString)
        return std::nullopt;
    const QString text = variant.toString();
    return hasLoneSurrogate(text) ? std::nullopt : std::optional<QVariant>(text.toUtf8());
}

std::optional<QVariant> fromIsoText(const QVariant& variant, Type type)
{
    if (variant.userType() != QMetaType::QString)
        return std::nullopt;
    return parsed(variant, type);
}

QVariant emptyValue(int metaType)
{
    switch (metaType) {
    case QMetaType::Bool:
        return QVariant(false);
    case QMetaType::LongLong:
        return QVariant(qlonglong(0));
    case QMetaType::ULongLong:
        return QVariant(qulonglong(0));
    case QMetaType::Double:
        return QVariant(0.0);
    case QMetaType::QString:
        return QVariant(QString());
    case QMetaType::QStringList:
        return QVariant(QStringList());
    case QMetaType::QByteArray:
        return QVariant(QByteArray());
    case QMetaType::QDate:
        return QVariant(QDate());
    case QMetaType::QTime:
        return QVariant(QTime());
    case QMetaType::QDateTime:
        return QVariant(QDateTime());
    default:
        return QVariant();
    }
}

bool isNull(int type)
{
    return type == QMetaType::UnknownType || type == QMetaType::Nullptr || type == QMetaType::Void;
}

} // namespace

std::optional<QVariant> convertVariant(const QVariant& variant, int metaType)
{
    const int type = variant.userType();
    if (type == metaType)
        return variant;
    if (isNull(type))
        return emptyValue(metaType);
    switch (metaType) {
    case QMetaType::Bool:
        return toBool(variant);
    case QMetaType::LongLong:
        return toSigned(variant);
    case QMetaType::ULongLong:
        return toUnsigned(variant);
    case QMetaType::Double:
        return toReal(variant);
    case QMetaType::QString:
        return toStringVariant(variant);
    case QMetaType::QStringList:
        return toListVariant(variant);
    case QMetaType::QByteArray:
        return toBytesVariant(variant);
    case QMetaType::QDate:
        return fromIsoText(variant, Type::Date);
    case QMetaType::QTime:
        return fromIsoText(variant, Type::Time);
    case QMetaType::QDateTime:
        return fromIsoText(variant, Type::DateTime);
    default:
        return std::nullopt;
    }
}

std::optional<QVariant> toAttributeVariant(const QVariant& variant)
{
    switch (variant.userType()) {
    case QMetaType::Bool:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::QString:
    case QMetaType::QStringList:
    case QMetaType::QByteArray:
    case QMetaType::QDate:
    case QMetaType::QTime:
    case QMetaType::QDateTime:
        return variant;
    case QMetaType::QVariantList:
        return toListVariant(variant);
    default:
        break;
    }
    if (isNull(variant.userType()))
        return QVariant();
    switch (numberIn(variant).kind) {
    case Number::Kind::Signed:
        return toSigned(variant);
    case Number::Kind::Unsigned: {
        // Signed where it fits, as integers of a file are.
        const std::optional<QVariant> asSigned = toSigned(variant);
        return asSigned ? asSigned : toUnsigned(variant);
    }
    case Number::Kind::Real:
        return toReal(variant);
    default:
        return toStringVariant(variant);
    }
}

bool isSameValue(const QVariant& a, const QVariant& b)
{
    const int type = a.userType();
    if (type != b.userType())
        return false;
    switch (type) {
    case QMetaType::QString: // nearly all values, and quicker when the type is named
        return *static_cast<const QString*>(a.constData()) == *static_cast<const QString*>(b.constData());
    case QMetaType::Double: { // close is not the same, nor is the zero below the other
        const double first = a.toDouble();
        const double second = b.toDouble();
        return (first == second && std::signbit(first) == std::signbit(second)) ||
               (std::isnan(first) && std::isnan(second));
    }
    case QMetaType::QDateTime:
        return isoText(a.toDateTime()) == isoText(b.toDateTime());
    default:
        return a == b;
    }
}

Value toValue(const QVariant& variant)
{
    switch (variant.userType()) {
    case QMetaType::Bool:
        return {Type::Bool, variant.toBool()};
    case QMetaType::LongLong:
        return {Type::Integer, std::int64_t(variant.toLongLong())};
    case QMetaType::ULongLong:
        return {Type::Unsigned, std::uint64_t(variant.toULongLong())};
    case QMetaType::Double:
        return {Type::Double, variant.toDouble()};
    case QMetaType::QString:
        return {Type::String, toBytes(variant.toString())};
    case QMetaType::QStringList: {
        std::vector<std::string> list;
        const QStringList elements = variant.toStringList();
        list.reserve(std::size_t(elements.size()));
        for (const QString& element : elements)
            list.push_back(toBytes(element));
        return {Type::StringList, std::move(list)};
    }
    case QMetaType::QByteArray:
        return {Type::ByteArray, variant.toByteArray().toStdString()};
    case QMetaType::QDate:
        return {Type::Date, isoText(variant.toDate())};
    case QMetaType::QTime:
        return {Type::Time, isoText(variant.toTime())};
    case QMetaType::QDateTime:
        return {Type::DateTime, isoText(variant.toDateTime())};
    default:
        return {Type::Null, {}};
    }
}

QVariant toVariant(const Value& value)
{
    switch (value.type) {
    case Type::Group:
    case Type::Null:
        return QVariant();
    case Type::Bool:
        return QVariant(std::get<bool>(value.data));
    case Type::Integer:
        return QVariant(qlonglong(std::get<std::int64_t>(value.data)));
    case Type::Unsigned:
        return QVariant(qulonglong(std::get<std::uint64_t>(value.data)));
    case Type::Double:
        return QVariant(std::get<double>(value.data));
    case Type::String: {
        const std::string& bytes = std::get<std::string>(value.data);
        if (std::optional<QString> text = fromBytes(bytes))
            return holdingText(*std::move(text));
        return QVariant(QByteArray::fromStdString(bytes));
    }
    case Type::StringList: {
        QStringList list;
        for (const std::string& element : std::get<std::vector<std::string>>(value.data))
            list << fromBytes(element).value_or(fromLatin(toText(Value{Type::ByteArray, element})));
        return QVariant(list);
    }
    case Type::ByteArray:
        return QVariant(QByteArray::fromStdString(std::get<std::string>(value.data)));
    case Type::Date:
        return QVariant(toDate(std::get<std::string>(value.data)));
    case Type::Time:
        return QVariant(toTime(std::get<std::string>(value.data)));
    case Type::DateTime:
        return QVariant(toDateTime(std::get<std::string>(value.data)));
    }
    return QVariant();
}

} // namespace FrameworkCore::Values
