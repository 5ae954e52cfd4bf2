#pragma once

#include <string>
#include <string_view>

namespace Repository::Documents {

class Document;

// How an export to json keeps "@name" and "#text", the attributes and texts of xml: its keys are components
// as they are, percent codes and numbers included, which "$names" in its root declares: {"@name": 1,
// "$names": "encoded"}.
class EncodedNames
{
public:
    // Whether only such an export can hold the path.
    static bool areNeededBy(std::string_view path);

    // From the path in the tree to that in the json document, and back.
    static std::string toDocument(std::string_view path);
    static std::string fromDocument(std::string_view path);

    // The path as other formats can hold it: "%40name", "name[2%5D".
    static std::string asPlainKeys(std::string_view path);

    // The member of the root, and its value.
    static constexpr std::string_view member = "$names";
    static constexpr std::string_view form = "encoded";
    static bool isDeclaredIn(const Document& document);
};

} // namespace Repository::Documents
