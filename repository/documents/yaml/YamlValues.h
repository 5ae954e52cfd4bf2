#pragma once

#include "repository/documents/yaml/YamlFile.h"

#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// Changes single values of a file in their own bytes. Whether that is allowed is asked before.
class YamlValues
{
public:
    explicit YamlValues(YamlFile& yamlFile) : file(yamlFile), tree(yamlFile.tree) {}

    // Why a value must not be changed, by whatever it would become; an outcome with the place.
    Outcome check(std::string_view path, NodeId id) const;

    // Whether it is a list as it was read, of which elements are aliases or are shown by some.
    bool hasLinkedElements(NodeId id) const;

    // Whether it can become a value of that spelling.
    Outcome checkKind(std::string_view path, NodeId id, std::string_view spelling) const;

    // A spelling in the style of the present one; nothing where YAML has no form for the value.
    std::optional<std::string> spell(NodeId id, const Value& value, Type tag) const;

    // Whether it was read with this value.
    bool wasRead(NodeId id, const Value& value) const;

    void put(NodeId id, const std::string& spelling);
    void putText(NodeId id, std::string text); // which has what sets it off
    void restore(NodeId id);

    // With what sets it off from its key.
    std::string withLead(NodeId id, const std::string& spelling) const;

    // Whether a text spells one value there.
    bool isSpelling(NodeId id, std::string_view spelling) const;

private:
    bool isBehindTab(NodeId id) const;
    bool isTextSpelling(NodeId id, std::string_view spelling) const;
    void noteText(NodeId id, bool isText);

    YamlFile& file;
    YamlTree& tree;
};

} // namespace Repository::Documents
