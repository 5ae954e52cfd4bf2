#pragma once

#include "repository/documents/common/Values.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

constexpr std::string_view xmlTypeTagBegin = "<?vantry ";

// A processing instruction that tells the type of an entry whose text alone would load as another:
// <?vantry type="date"?> right before an element or text; with attribute="name" it is about that attribute of
// the element. With escapes="yes" the text is spelled like bytes are, "\x" and two hex digits for a byte, so
// that it holds what xml has no characters for.
struct XmlTypeTag
{
    std::string_view attribute; // empty for the element or text itself
    Type type = Type::String;
    bool escapes = false;
    std::size_t begin = 0; // of the instruction, in the leading trivia of its node
    std::size_t end = 0;

    std::string write() const;
};

// The type tags at the end of a node's leading trivia, the nearest first; nothing but blanks is between them
// and the node.
std::vector<XmlTypeTag> readXmlTypeTags(std::string_view leading);

} // namespace Repository::Documents
