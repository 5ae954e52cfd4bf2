#include "repository/fleet/ValueCodec.h"

#include "repository/documents/common/Values.h"
#include "repository/documents/json/JsonScalar.h"

#include <QByteArray>

#include <array>
#include <cmath>
#include <simdjson.h>

namespace Repository {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;
using simdjson::dom::element;

namespace {

struct TypeName
{
    Type type;
    std::string_view name;
};

// The first of a type is the one that is written.
constexpr std::array<TypeName, 15> typeNames{{{Type::Group, "g"},
                                              {Type::Null, "z"},
                                              {Type::Bool, "b"},
                                              {Type::Integer, "i64"},
                                              {Type::Unsigned, "u64"},
                                              {Type::Double, "f64"},
                                              {Type::String, "s"},
                                              {Type::StringList, "sl"},
                                              {Type::ByteArray, "y"},
                                              {Type::Date, "d"},
                                              {Type::Time, "t"},
                                              {Type::DateTime, "dt"},
                                              {Type::Integer, "i32"},
                                              {Type::Unsigned, "u32"},
                                              {Type::Double, "f32"}}};

std::string_view nameOf(Type type)
{
    for (const TypeName& row : typeNames) {
        if (row.type == type)
            return row.name;
    }
    return {};
}

std::string quotedNumber(const Value& value)
{
    return Documents::quoted(Documents::toText(value));
}

// With a fraction or an exponent, so that readers take it for no integer, and minus zero stays.
std::string doubleText(const Value& value)
{
    std::string text = Documents::toText(value);
    if (!std::isfinite(std::get<double>(value.data)))
        return Documents::quoted(text);
    const bool isWhole = text.find_first_of(".e") == std::string::npos;
    return isWhole ? text + ".0" : text;
}

std::string listText(const std::vector<std::string>& list)
{
    std::string text = "[";
    for (const std::string& each : list) {
        if (text.size() > 1)
            text += ',';
        text += Documents::encodeString(each);
    }
    return text + ']';
}

// Empty for a type that the name says it all of.
std::string valueText(const Value& value)
{
    switch (value.type) {
    case Type::Group:
    case Type::Null:
        return {};
    case Type::Bool:
        return Documents::toText(value);
    case Type::Integer:
    case Type::Unsigned:
        return quotedNumber(value);
    case Type::Double:
        return doubleText(value);
    case Type::StringList:
        return listText(std::get<std::vector<std::string>>(value.data));
    case Type::ByteArray: {
        const auto base64 = QByteArray::fromStdString(std::get<std::string>(value.data)).toBase64();
        return Documents::quoted(base64.toStdString());
    }
    default:
        return Documents::encodeString(std::get<std::string>(value.data));
    }
}

std::optional<Type> typeNamed(std::string_view name)
{
    for (const TypeName& row : typeNames) {
        if (row.name == name)
            return row.type;
    }
    return {};
}

// A number may also be written as a number.
std::optional<Value> readScalar(const element& json, Type type)
{
    std::string_view text;
    if (json.get(text) == simdjson::SUCCESS) {
        const auto read = Documents::readFileText(text, type);
        return read.ok() ? std::optional(read.value) : std::nullopt;
    }
    if (type == Type::Integer && json.is_int64())
        return Value{type, std::int64_t(json)};
    if (type == Type::Unsigned && json.is_uint64())
        return Value{type, std::uint64_t(json)};
    if (type == Type::Double && json.is_number())
        return Value{type, double(json)};
    return {};
}

std::optional<Value> readList(const element& json)
{
    simdjson::dom::array array;
    if (json.get(array) != simdjson::SUCCESS)
        return {};
    std::vector<std::string> list;
    for (const element each : array) {
        std::string_view text;
        if (each.get(text) != simdjson::SUCCESS)
            return {};
        list.emplace_back(text);
    }
    return Value{Type::StringList, std::move(list)};
}

std::optional<Value> readBytes(std::string_view base64)
{
    const auto decoded = QByteArray::fromBase64Encoding(QByteArray(base64.data(), int(base64.size())),
                                                        QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? std::optional(Value{Type::ByteArray, decoded.decoded.toStdString()}) : std::nullopt;
}

std::optional<Value> readValue(const element& json, Type type)
{
    std::string_view text;
    bool flag = false;
    switch (type) {
    case Type::Bool:
        return json.get(flag) == simdjson::SUCCESS ? std::optional(Value{type, flag}) : std::nullopt;
    case Type::StringList:
        return readList(json);
    case Type::ByteArray:
        return json.get(text) == simdjson::SUCCESS ? readBytes(text) : std::nullopt;
    case Type::String:
        return json.get(text) == simdjson::SUCCESS ? std::optional(Value{type, std::string(text)})
                                                   : std::nullopt;
    default:
        return readScalar(json, type);
    }
}

} // namespace

std::string ValueCodec::encode(const Value& value, std::string_view writer)
{
    std::string text = "{\"t\":\"";
    text += nameOf(value.type);
    text += '"';
    const std::string written = valueText(value);
    if (!written.empty())
        text.append(",\"v\":").append(written);
    if (!writer.empty())
        text.append(",\"w\":\"").append(writer).append("\"");
    return text += '}';
}

std::optional<ValueCodec::Decoded> ValueCodec::decode(std::string_view text)
{
    thread_local simdjson::dom::parser parser;
    simdjson::dom::object object;
    std::string_view name;
    if (parser.parse(text.data(), text.size()).get(object) != simdjson::SUCCESS ||
        object["t"].get(name) != simdjson::SUCCESS)
        return {};
    const auto type = typeNamed(name);
    if (!type)
        return {};
    Decoded decoded;
    std::string_view writer;
    if (object["w"].get(writer) == simdjson::SUCCESS)
        decoded.writer = writer;
    if (*type == Type::Group || *type == Type::Null) {
        decoded.value.type = *type;
        return decoded;
    }
    element json;
    auto value = object["v"].get(json) == simdjson::SUCCESS ? readValue(json, *type) : std::nullopt;
    if (!value)
        return {};
    decoded.value = *std::move(value);
    return decoded;
}

} // namespace Repository
