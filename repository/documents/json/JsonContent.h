#pragma once

#include "host/FrameworkCore/Values/Value.h"
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
JsonContent toContent(const FrameworkCore::Values::Value& value);
JsonContent toTaggedContent(const FrameworkCore::Values::Value& value);

// What the spelling of a scalar or of an array of texts means, in an entry with a tag of its type or (Group)
// without one.
FrameworkCore::Values::Value readContent(JsonKind kind, std::string_view spelling,
                                         FrameworkCore::Values::Type tag);

// True when the entry would be read as this very value, with the tag or (Group) without one.
bool holds(const JsonContent& content, FrameworkCore::Values::Type tag,
           const FrameworkCore::Values::Value& value);

} // namespace Repository::Documents
