#include "repository/store/NodeValue.h"

#include "host/FrameworkCore/Values/Utf8.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/store/NodePages.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace Repository {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

constexpr int formBits = 3;
constexpr quint64 formMask = (1 << formBits) - 1;

// What a word holds besides its form.
enum Form : quint64 {
    Variant,   // a pointer to it, or null
    Text,      // a pointer to its size in one byte and its characters
    PagedText, // the same in NodePages
    ShortText, // its size in the rest of the lowest byte, and its characters in the others
    Bool,
    Integer,
    Unsigned,
    Double // of which these bits are zero
};

constexpr std::size_t longestText = 255;
constexpr std::size_t longestShortText = 7;

Form formOf(quint64 word)
{
    return Form(word & formMask);
}

// A number of so many bits.
template <typename Number>
bool fits(Number number)
{
    constexpr Number bound = Number(1) << (64 - formBits - (std::is_signed_v<Number> ? 1 : 0));
    return number < bound && (!std::is_signed_v<Number> || number >= Number(0) - bound);
}

} // namespace

NodeValue::NodeValue(const QVariant& variant)
{
    switch (variant.userType()) {
    case QMetaType::UnknownType:
        return;
    case QMetaType::QString: {
        const QString& text = *static_cast<const QString*>(variant.constData());
        const auto* const characters = reinterpret_cast<const char16_t*>(text.utf16());
        if (!text.isNull() && takeCharacters(characters, std::size_t(text.size()), nullptr))
            return;
        break;
    }
    case QMetaType::Bool:
        word = (quint64(variant.toBool()) << formBits) | Bool;
        return;
    case QMetaType::LongLong:
        if (!fits(variant.toLongLong()))
            break;
        word = (quint64(variant.toLongLong()) << formBits) | Integer;
        return;
    case QMetaType::ULongLong:
        if (!fits(variant.toULongLong()))
            break;
        word = (variant.toULongLong() << formBits) | Unsigned;
        return;
    case QMetaType::Double: {
        const double number = variant.toDouble();
        quint64 bits = 0;
        std::memcpy(&bits, &number, sizeof bits);
        if (formOf(bits) != 0)
            break;
        word = bits | Double;
        return;
    }
    default:
        break;
    }
    word = reinterpret_cast<quint64>(new QVariant(variant)) | Variant;
}

NodeValue::NodeValue(const Value& value, NodePages* pages)
{
    const auto* const text = value.type == Type::String ? std::get_if<std::string>(&value.data) : nullptr;
    const bool isTaken = text && FrameworkCore::Values::isAscii(*text) &&
                         takeCharacters(reinterpret_cast<const quint8*>(text->data()), text->size(), pages);
    if (!isTaken)
        *this = NodeValue(FrameworkCore::Values::toVariant(value));
}

NodeValue& NodeValue::operator=(NodeValue&& other) noexcept
{
    std::swap(word, other.word);
    return *this;
}

NodeValue::~NodeValue()
{
    if (formOf(word) == Variant)
        delete getVariant();
    else if (formOf(word) == Text)
        delete[] getBlock();
    else if (formOf(word) == PagedText)
        NodePages::release(getBlock());
}

// Whether they can be had in this form.
template <typename Character>
bool NodeValue::takeCharacters(const Character* characters, std::size_t size, NodePages* pages)
{
    const Character* const end = characters + size;
    if (size > longestText || std::any_of(characters, end, [](Character c) { return c > 0xFF; }))
        return false;
    if (size <= longestShortText) {
        word = (quint64(size) << formBits) | ShortText;
        for (std::size_t i = 0; i < size; ++i)
            word |= quint64(characters[i]) << (8 * (i + 1));
        return true;
    }
    auto* block = pages ? static_cast<char*>(pages->take(size + 1)) : nullptr;
    const Form form = block ? PagedText : Text;
    if (!block)
        block = new char[size + 1];
    block[0] = char(size);
    std::transform(characters, end, block + 1, [](Character c) { return char(c); });
    word = reinterpret_cast<quint64>(block) | form;
    return true;
}

bool NodeValue::isText() const
{
    const Form form = formOf(word);
    return form == Text || form == PagedText || form == ShortText;
}

char* NodeValue::getBlock() const
{
    return reinterpret_cast<char*>(word & ~formMask);
}

template <typename Use>
auto NodeValue::useText(const Use& use) const
{
    if (formOf(word) != ShortText) {
        const char* const block = getBlock();
        return use(QLatin1String(block + 1, quint8(*block)));
    }
    char characters[longestShortText];
    for (std::size_t i = 0; i < longestShortText; ++i)
        characters[i] = char(word >> (8 * (i + 1)));
    return use(QLatin1String(characters, int((word & 0xFF) >> formBits)));
}

int NodeValue::getType() const
{
    switch (formOf(word)) {
    case Text:
    case PagedText:
    case ShortText:
        return QMetaType::QString;
    case Bool:
        return QMetaType::Bool;
    case Integer:
        return QMetaType::LongLong;
    case Unsigned:
        return QMetaType::ULongLong;
    case Double:
        return QMetaType::Double;
    default:
        return isNull() ? QMetaType::UnknownType : getVariant()->userType();
    }
}

QVariant NodeValue::toVariant() const
{
    switch (formOf(word)) {
    case Text:
    case PagedText:
    case ShortText:
        return useText([](QLatin1String text) { return FrameworkCore::Values::holdingText(text); });
    case Bool:
        return word >> formBits != 0;
    case Integer:
        return qlonglong(word) >> formBits;
    case Unsigned:
        return qulonglong(word >> formBits);
    case Double: {
        const quint64 bits = word - Double;
        double number = 0;
        std::memcpy(&number, &bits, sizeof number);
        return number;
    }
    default:
        return isNull() ? QVariant() : *getVariant();
    }
}

bool NodeValue::isSame(const QVariant& variant) const
{
    if (isText() && variant.userType() == QMetaType::QString) {
        const QString& other = *static_cast<const QString*>(variant.constData());
        return useText([&](QLatin1String text) { return other == text; });
    }
    return FrameworkCore::Values::isSameValue(toVariant(), variant);
}

QString& NodeValue::ensureText()
{
    if (getType() != QMetaType::QString || isText()) {
        NodeValue made;
        made.word = reinterpret_cast<quint64>(new QVariant(isText() ? toVariant() : QVariant(QString())));
        *this = std::move(made);
    }
    return *static_cast<QString*>(getVariant()->data());
}

} // namespace Repository
