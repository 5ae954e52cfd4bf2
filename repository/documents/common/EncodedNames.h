#pragma once

#include <string>
#include <string_view>

namespace Repository::Documents {

class Document;

// How an export to json keeps the components "@name" and "#text", the attributes and texts of xml, which no
// key of a json file stands for. All keys of such an export are the components as they are, percent codes and
// numbers included, and the member "$names" of its root says so: {"@name": 1, "$names": "encoded"}.
class EncodedNames
{
public:
    // True for the path of an entry that an export can only hold in this way.
    static bool areNeededBy(std::string_view path);

    // Where the entry of the tree stands in the export as a json document, and back.
    static std::string toDocument(std::string_view path);
    static std::string fromDocument(std::string_view path);

    // The path with those components, and with numbered ones, as other files can hold them: "%40name" and
    // "name[2%5D".
    static std::string asPlainKeys(std::string_view path);

    // The member of the root, and its value.
    static constexpr std::string_view member = "$names";
    static constexpr std::string_view form = "encoded";
    static bool isDeclaredIn(const Document& document);
};

} // namespace Repository::Documents
