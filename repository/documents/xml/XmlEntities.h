#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace Repository::Documents {

// The entities that the doctype of a file declares with a text of their own, and the five of xml itself.
class XmlEntities
{
public:
    // The text has its character references resolved. The first declaration of a name counts.
    void declare(std::string name, std::string text) { texts.emplace(std::move(name), std::move(text)); }

    // The text of a reference, without "&" and ";". Nothing for one that is external, unknown or more than
    // text.
    std::optional<std::string> expand(std::string_view reference) const;

private:
    std::unordered_map<std::string, std::string> texts;
};

} // namespace Repository::Documents
