#pragma once

#include "repository/documents/common/Document.h"

#include <string>
#include <string_view>

namespace Repository::Documents {

// How a file of xml holds what is no tree of elements: below an element "root", with "_x0020_" in names for
// the character of that hexadecimal number, so that the first element of an array is "_x0030_". The file says
// so in an instruction. An empty element "_x_group" says that the one around it is a group and no array.
class XmlEncodedNames
{
public:
    static Entry encode(const Entry& entry);
    static Entry decode(const Entry& entry);

    static void declareIn(std::string& text);
    static bool areDeclaredIn(const Document& document);
};

} // namespace Repository::Documents
