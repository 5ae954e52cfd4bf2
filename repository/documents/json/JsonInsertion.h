#pragma once

#include "repository/documents/json/JsonContent.h"
#include "repository/documents/json/JsonFile.h"

#include <string_view>

namespace Repository::Documents {

// Adds one entry to a json file, with the groups that lead to it.
class JsonInsertion
{
public:
    explicit JsonInsertion(JsonFile& jsonFile)
        : tree(jsonFile.tree), members(jsonFile.members), editor(jsonFile.editor), types(jsonFile.types),
          file(jsonFile)
    {
    }

    Outcome insert(std::string_view path, const Value& value);

    // What to write for a new entry, and whether the file has to say its type; or why it cannot be.
    JsonContent contentOf(const Value& value, bool& needsTag) const;

    // Whether the file can say the type of a new entry.
    Outcome checkTag(Type type) const;

    // Whether a child of a container, or of a new object, can have the name; empty for its own value.
    Outcome checkName(NodeId container, std::string_view component) const;

private:
    Outcome check(std::string_view path, const PathMatch& place, const JsonContent& wanted) const;
    void insertAt(const PathMatch& place, const JsonContent& wanted);

    JsonTree& tree;
    JsonMembers& members;
    JsonEditor& editor;
    JsonTypes& types;
    const JsonFile& file;
};

} // namespace Repository::Documents
