#pragma once

#include "repository/documents/json/JsonFile.h"

#include <optional>
#include <string_view>

namespace Repository::Documents {

// Adds elements to arrays and moves them, lists of texts included. Nothing comes back for a path that is not
// in an array.
class JsonElements
{
public:
    explicit JsonElements(JsonFile& jsonFile) : file(jsonFile) {}

    // noNode for what is not in an array.
    NodeId find(std::string_view path);

    std::optional<Outcome> insert(std::string_view path, const Value& value);
    std::optional<Outcome> move(std::string_view path, std::string_view newPath);

private:
    Outcome insertInto(NodeId array, std::string_view path, const Value& value);
    NodeId arrayAt(std::string_view path);

    JsonFile& file;
};

} // namespace Repository::Documents
