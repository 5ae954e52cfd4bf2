#pragma once

#include "host/FrameworkCore/Values/Value.h"
#include "repository/documents/JsonNode.h"

#include <string>
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

// How json writes a value.
JsonContent toContent(const FrameworkCore::Values::Value& value);

// True when the values are the same for a file, too: the zeros of both signs differ there.
bool isSame(const FrameworkCore::Values::Value& a, const FrameworkCore::Values::Value& b);

} // namespace Repository::Documents
