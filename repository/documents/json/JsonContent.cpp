#include "repository/documents/json/JsonContent.h"

#include "repository/documents/common/TypeTag.h"
#include "repository/documents/json/JsonScalar.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Repository::Documents {

namespace {

constexpr const char* notUtf8 =
    QT_TRANSLATE_NOOP("FrameworkCore::Values", "the text is not valid UTF-8, which json demands");

JsonContent scalar(JsonKind kind, std::string spelling)
{
    return {kind, std::move(spelling), {}, {}};
}

JsonContent refused(std::string error)
{
    return {JsonKind::Null, {}, {}, std::move(error)};
}

JsonContent ofDouble(double number)
{
    if (!std::isfinite(number))
        return refused(Reason::tr("json has no number for infinity and \"not a number\""));
    return scalar(JsonKind::Number, toText({Type::Double, number}));
}

Value readPlain(JsonKind kind, std::string_view spelling)
{
    switch (kind) {
    case JsonKind::Array:
        return {Type::StringList, decodeList(spelling)};
    case JsonKind::Text:
        return {Type::String, decodeString(spelling)};
    case JsonKind::Number:
        return readNumber(spelling);
    case JsonKind::True:
        return {Type::Bool, true};
    case JsonKind::False:
        return {Type::Bool, false};
    case JsonKind::Object:
    case JsonKind::Null:
        break;
    }
    return {Type::Null, {}};
}

} // namespace

JsonContent toContent(const Value& value)
{
    switch (value.type) {
    case Type::Group:
        return {};
    case Type::Null:
        return scalar(JsonKind::Null, "null");
    case Type::Bool:
        return scalar(std::get<bool>(value.data) ? JsonKind::True : JsonKind::False, toText(value));
    case Type::Integer:
    case Type::Unsigned:
        return scalar(JsonKind::Number, toText(value));
    case Type::Double:
        return ofDouble(std::get<double>(value.data));
    case Type::String: {
        const auto& text = std::get<std::string>(value.data);
        return isUtf8(text) ? scalar(JsonKind::Text, encodeString(text)) : refused(Reason::tr(notUtf8));
    }
    case Type::StringList: {
        const auto& list = std::get<std::vector<std::string>>(value.data);
        const bool valid =
            std::all_of(list.begin(), list.end(), [](const auto& text) { return isUtf8(text); });
        return valid ? JsonContent{JsonKind::Array, {}, list, {}} : refused(Reason::tr(notUtf8));
    }
    default:
        return refused(Reason::tr("json has no form for %1", {describeType(value.type)}));
    }
}

JsonContent toTaggedContent(const Value& value)
{
    JsonContent content = toContent(value);
    if (!content.error.empty() && value.type != Type::String && value.type != Type::StringList)
        content = scalar(JsonKind::Text, encodeString(toText(value)));
    return content;
}

Value readContent(JsonKind kind, std::string_view spelling, Type tag)
{
    Value plain = readPlain(kind, spelling);
    if (tag == Type::Group || kind == JsonKind::Array)
        return plain;
    const std::string text = kind == JsonKind::Text ? decodeString(spelling) : std::string(spelling);
    return readTaggedValue(tag, text, std::move(plain));
}

bool holds(const JsonContent& content, Type tag, const Value& value)
{
    if (!content.error.empty())
        return false;
    if (content.kind == JsonKind::Object || content.kind == JsonKind::Array)
        return content.kind == (value.type == Type::Group ? JsonKind::Object : JsonKind::Array);
    return isSame(readContent(content.kind, content.spelling, tag), value);
}

} // namespace Repository::Documents
