#pragma once

#include "repository/documents/common/Values.h"
#include "repository/documents/json/JsonNode.h"

#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// What to write in the place of a value; for a value that json cannot hold, why.
struct JsonContent
{
    JsonKind kind = JsonKind::Object; // an object without members
    std::string spelling;             // of a scalar
    std::vector<std::string> list;    // the elements of an array
    std::string error;
};

// How json writes a value by itself, and in an entry whose type is tagged.
JsonContent toContent(const Value& value);
JsonContent toTaggedContent(const Value& value);

// The value of a scalar or an array of texts, with a type tag or (Group) without one.
Value readContent(JsonKind kind, std::string_view spelling, Type tag);

// True when the entry would be read as this very value, with the tag or (Group) without one.
bool holds(const JsonContent& content, Type tag, const Value& value);

} // namespace Repository::Documents
