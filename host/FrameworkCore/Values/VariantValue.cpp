#include "host/FrameworkCore/Values/VariantValue.h"

#include "host/FrameworkCore/Values/Text.h"
#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantText.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QStringList>
#include <QUrl>
#include <QUuid>

#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <type_traits>
#include <variant>

namespace FrameworkCore::Values {

namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("FrameworkCore::Values", text);
}

// Where there is Qt, it translates for the code that is made without.
const bool isAsked = [] {
    Reason::translateBy([](const char* form) { return translated(form).toStdString(); });
    return true;
}();

using Number = std::variant<std::monostate, bool, qlonglong, qulonglong, double>;

Number numberIn(const QVariant& variant)
{
    switch (variant.userType()) {
    case QMetaType::Bool:
        return variant.toBool();
    case QMetaType::Int: // nearly all numbers, and quicker when the type is named
        return qlonglong(variant.value<int>());
    case QMetaType::LongLong:
    case QMetaType::Long:
    case QMetaType::Short:
    case QMetaType::Char:
    case QMetaType::SChar:
        return variant.toLongLong();
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
    case QMetaType::UShort:
    case QMetaType::UChar:
        return variant.toULongLong();
    case QMetaType::Float:
    case QMetaType::Double:
        return variant.toDouble();
    default:
        if (QMetaType::typeFlags(variant.userType()) & QMetaType::IsEnumeration)
            return variant.toLongLong();
        return {};
    }
}

// Whether the other type has exactly this number. The bounds are powers of two, so that they are exact as
// doubles.
template <typename To, typename From>
bool isExact(From number)
{
    if constexpr (std::is_same_v<From, double>) {
        constexpr double bound = std::is_signed_v<To> ? 9223372036854775808.0 : 18446744073709551616.0;
        return std::is_same_v<To, double> || (number >= (std::is_signed_v<To> ? -bound : 0.0) &&
                                              number < bound && std::trunc(number) == number);
    } else if constexpr (std::is_same_v<To, double>) {
        return isExactDouble(std::conditional_t<std::is_signed_v<From>, std::int64_t, std::uint64_t>(number));
    } else {
        return (number < From(0)) == (To(number) < To(0));
    }
}

std::optional<QVariant> parsed(const QVariant& text, Type type)
{
    if (text.userType() != QMetaType::QString)
        return std::nullopt;
    const ReadResult result = readText(toBytes(text.toString()), type);
    return result.ok() ? std::optional(toVariant(result.value)) : std::nullopt;
}

template <typename To>
std::optional<QVariant> toNumber(const QVariant& variant, Type type)
{
    const auto convert = [&](auto number) -> std::optional<QVariant> {
        if constexpr (std::is_same_v<decltype(number), std::monostate>)
            return parsed(variant, type);
        else if (isExact<To>(number))
            return QVariant(To(number));
        return std::nullopt;
    };
    return std::visit(convert, numberIn(variant));
}

std::optional<QVariant> toBool(const QVariant& variant, Type type)
{
    if (variant.userType() == QMetaType::QString)
        return parsed(variant, type);
    const std::optional<QVariant> integer = toNumber<qulonglong>(variant, Type::Unsigned);
    return integer && integer->toULongLong() <= 1 ? std::optional<QVariant>(integer->toULongLong() == 1)
                                                  : std::nullopt;
}

// The standard library writes the digits straight away, QString::number by way of a locale's rules.
template <typename Integer>
QVariant holdingNumber(Integer number)
{
    char digits[std::numeric_limits<Integer>::digits10 + 2]; // of the longest one, and a sign
    const std::to_chars_result written = std::to_chars(std::begin(digits), std::end(digits), number);
    return holdingText(QString::fromLatin1(digits, int(written.ptr - digits)));
}

std::optional<QVariant> toStringVariant(const QVariant& variant, Type)
{
    const Number number = numberIn(variant);
    if (const auto* const truth = std::get_if<bool>(&number))
        return QVariant(*truth ? QStringLiteral("true") : QStringLiteral("false"));
    if (const auto* const integer = std::get_if<qlonglong>(&number))
        return holdingNumber(*integer);
    if (const auto* const natural = std::get_if<qulonglong>(&number))
        return holdingNumber(*natural);
    if (const auto* const real = std::get_if<double>(&number))
        return holdingText(fromLatin(toText(Value{Type::Double, *real})));
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

std::optional<QVariant> toListVariant(const QVariant& variant, Type)
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

std::optional<QVariant> toBytesVariant(const QVariant& variant, Type)
{
    if (variant.userType() != QMetaType::QString)
        return std::nullopt;
    const QString text = variant.toString();
    return hasLoneSurrogate(text) ? std::nullopt : std::optional<QVariant>(text.toUtf8());
}

template <typename Held>
QVariant empty()
{
    return QVariant::fromValue(Held());
}

// The rows of typeTable by what QVariant makes of them.
struct VariantRow
{
    int metaType;
    QVariant (*empty)();
    std::optional<QVariant> (*convert)(const QVariant& variant, Type type);
};

constexpr std::array<VariantRow, typeCount> variantTable{
    {{QMetaType::UnknownType, nullptr, nullptr},
     {QMetaType::UnknownType, nullptr, nullptr},
     {QMetaType::Bool, empty<bool>, toBool},
     {QMetaType::LongLong, empty<qlonglong>, toNumber<qlonglong>},
     {QMetaType::ULongLong, empty<qulonglong>, toNumber<qulonglong>},
     {QMetaType::Double, empty<double>, toNumber<double>},
     {QMetaType::QString, empty<QString>, toStringVariant},
     {QMetaType::QStringList, empty<QStringList>, toListVariant},
     {QMetaType::QByteArray, empty<QByteArray>, toBytesVariant},
     {QMetaType::QDate, empty<QDate>, parsed},
     {QMetaType::QTime, empty<QTime>, parsed},
     {QMetaType::QDateTime, empty<QDateTime>, parsed}}};

constexpr auto typesByMetaType = [] {
    std::array<Type, QMetaType::QDateTime + 1> types{};
    for (Type& type : types)
        type = Type::Null;
    for (std::size_t type = std::size_t(Type::Bool); type < typeCount; ++type)
        types[std::size_t(variantTable[type].metaType)] = Type(type);
    return types;
}();

bool isNull(int type)
{
    return type == QMetaType::UnknownType || type == QMetaType::Nullptr || type == QMetaType::Void;
}

} // namespace

QVariant holdingText(QString text)
{
    QVariant variant{QString()};
    static_cast<QString*>(variant.data())->swap(text);
    return variant;
}

Type typeOf(int metaType)
{
    const auto at = static_cast<std::size_t>(metaType);
    return at < typesByMetaType.size() ? typesByMetaType[at] : Type::Null;
}

std::optional<QVariant> convertVariant(const QVariant& variant, int metaType)
{
    if (variant.userType() == metaType)
        return variant;
    const Type type = typeOf(metaType);
    if (type == Type::Null)
        return isNull(variant.userType()) ? std::optional(QVariant()) : std::nullopt;
    const VariantRow& row = variantTable[std::size_t(type)];
    return isNull(variant.userType()) ? std::optional(row.empty()) : row.convert(variant, type);
}

std::optional<QVariant> toAttributeVariant(const QVariant& variant)
{
    const int metaType = variant.userType();
    if (isNull(metaType))
        return QVariant();
    if (typeOf(metaType) != Type::Null)
        return variant;
    if (metaType == QMetaType::QVariantList)
        return toListVariant(variant, Type::StringList);
    const Number number = numberIn(variant);
    if (std::holds_alternative<double>(number))
        return toNumber<double>(variant, Type::Double);
    if (std::holds_alternative<std::monostate>(number))
        return toStringVariant(variant, Type::String);
    // Signed where it fits, as integers of a file are.
    const std::optional<QVariant> asSigned = toNumber<qlonglong>(variant, Type::Integer);
    return asSigned ? asSigned : toNumber<qulonglong>(variant, Type::Unsigned);
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
    const Type type = typeOf(variant.userType());
    switch (type) {
    case Type::Bool:
        return {type, variant.toBool()};
    case Type::Integer:
        return {type, std::int64_t(variant.toLongLong())};
    case Type::Unsigned:
        return {type, std::uint64_t(variant.toULongLong())};
    case Type::Double:
        return {type, variant.toDouble()};
    case Type::String:
        return {type, toBytes(variant.toString())};
    case Type::StringList: {
        std::vector<std::string> list;
        const QStringList elements = variant.toStringList();
        list.reserve(std::size_t(elements.size()));
        for (const QString& element : elements)
            list.push_back(toBytes(element));
        return {type, std::move(list)};
    }
    case Type::ByteArray:
        return {type, variant.toByteArray().toStdString()};
    case Type::Date:
        return {type, isoText(variant.toDate())};
    case Type::Time:
        return {type, isoText(variant.toTime())};
    case Type::DateTime:
        return {type, isoText(variant.toDateTime())};
    case Type::Group:
    case Type::Null:
        break;
    }
    return {type, {}};
}

QVariant toVariant(const Value& value)
{
    const auto* const text = std::get_if<std::string>(&value.data);
    switch (value.type) {
    case Type::Group:
    case Type::Null:
        break;
    case Type::Bool:
        return QVariant(std::get<bool>(value.data));
    case Type::Integer:
        return QVariant(qlonglong(std::get<std::int64_t>(value.data)));
    case Type::Unsigned:
        return QVariant(qulonglong(std::get<std::uint64_t>(value.data)));
    case Type::Double:
        return QVariant(std::get<double>(value.data));
    case Type::String:
        if (std::optional<QString> characters = fromBytes(*text))
            return holdingText(*std::move(characters));
        return QVariant(QByteArray::fromStdString(*text));
    case Type::StringList: {
        const auto& elements = std::get<std::vector<std::string>>(value.data);
        QStringList list;
        list.reserve(int(elements.size()));
        for (const std::string& element : elements)
            list << fromBytes(element).value_or(fromLatin(toText(Value{Type::ByteArray, element})));
        return QVariant(list);
    }
    case Type::ByteArray:
        return QVariant(QByteArray::fromStdString(*text));
    case Type::Date:
        return QVariant(toDate(*text));
    case Type::Time:
        return QVariant(toTime(*text));
    case Type::DateTime:
        return QVariant(toDateTime(*text));
    }
    return QVariant();
}

QString typeText(Type type)
{
    return QString::fromStdString(describeType(type));
}

QString rangeText(Type type)
{
    const TypeRow& row = rowOf(type);
    return row.lowest.empty() ? typeText(type)
                              : translated(QT_TRANSLATE_NOOP("FrameworkCore::Values", "%1 from %2 to %3"))
                                    .arg(typeText(type), QString::fromStdString(row.lowest),
                                         QString::fromStdString(row.highest));
}

QString errorText(const ReadResult& refused)
{
    const QString form = translated(std::string(refused.form).c_str());
    return QString::fromStdString(filledText(form.toStdString(), refused.parts));
}

} // namespace FrameworkCore::Values
