#pragma once

#include "repository/documents/common/Document.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// How a file holds names that its format has no form for: the attributes and texts of xml, "@name" and
// "#text", and in json a second entry of one name, "name[2]". Its keys are components as they are, percent
// codes and numbers included, and the file says so: json by {"@name": 1, "$names": "encoded"}, a file of
// lines by its first line, "# @names encoded". In lines "#text" is "@#text", since "#" begins a comment; "@#"
// in a group says that this is a group, of which it may be all there is, and "@#value" is the value of the
// whole. In json that is the key of an array in which there are such names.
class EncodedNames
{
public:
    // Whether only such a file of json can hold the path, or one of the entries.
    static bool areNeededBy(std::string_view path);
    static bool areNeededBy(const std::vector<Entry>& entries);

    // From the path in the tree to that in the json document, and back.
    static std::string toDocument(std::string_view path);
    static std::string fromDocument(std::string_view path);

    // The member of the root, and its value.
    static constexpr std::string_view member = "$names";
    static constexpr std::string_view form = "encoded";
    static constexpr std::string_view whole = "@#value";
    static bool isDeclaredIn(const Document& document);

    // Gives the entries of a whole file such names where they need them, or, where the root of a file cannot
    // be an array, if it is one; where any path is then; and one of them back, if it is not what says so.
    static void encodeWhole(std::vector<Entry>& entries, bool alsoArray);
    static std::string pathInWhole(std::string_view path, const std::vector<Entry>& encoded);
    static std::optional<Entry> originalOf(const Entry& entry);

    // The same for lines.
    static Entry toLines(const Entry& entry);
    static Entry fromLines(const Entry& entry);
    static std::string lineOf(std::string_view text);
    static bool areDeclaredInLines(const Document& document);
};

} // namespace Repository::Documents
