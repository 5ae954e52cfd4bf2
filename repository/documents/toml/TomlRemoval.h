#pragma once

#include "repository/documents/toml/TomlEditor.h"

#include <string>
#include <string_view>

namespace Repository::Documents {

// Takes an entry and all below it out of a file, or gives it another key.
class TomlRemoval
{
public:
    explicit TomlRemoval(TomlFile& tomlFile) : file(tomlFile), tree(tomlFile.tree), editor(tomlFile) {}

    void remove(NodeId id, bool withComments);

    void rename(NodeId id, const std::string& key);

private:
    void removeItems(NodeId id, bool withComments);
    void renameItems(NodeId id, const std::string& key);

    TomlFile& file;
    TomlTree& tree;
    TomlEditor editor;
};

} // namespace Repository::Documents
