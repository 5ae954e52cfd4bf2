#pragma once

#include "repository/documents/xml/XmlNode.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

constexpr std::string_view xmlTextComponent = "#text";

// What a component of a path leads to: an element by its name, an attribute by @ and its name, a text between
// elements by #text; the second and further of a name with their number.
struct XmlComponent
{
    XmlKind kind = XmlKind::Element;
    std::string name; // empty for a text
    std::uint32_t number = 1;
};

// Nothing for a component that no file can have.
std::optional<XmlComponent> readXmlComponent(std::string_view component);

// True for the name of an element or attribute as the parser reads them, prefix and all.
bool isXmlName(std::string_view name);

} // namespace Repository::Documents
