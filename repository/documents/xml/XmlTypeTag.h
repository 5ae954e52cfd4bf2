#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/common/Values.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

constexpr std::string_view xmlTypeTagBegin = "<?vantry ";

// A processing instruction with the type of an entry whose text alone would load as another: <?vantry
// type="date"?> right before an element or text, with attribute="name" for that attribute of the element.
// With escapes="yes" the text is spelled like bytes, so that it can hold what xml has no characters for.
struct XmlTypeTag
{
    std::string_view attribute; // empty for the element or text itself
    Type type = Type::String;
    bool escapes = false;
    std::size_t begin = 0; // of the instruction, in the leading trivia of its node
    std::size_t end = 0;

    std::string write() const;
};

// The type tags right before a node, at the end of its leading trivia, the nearest first.
std::vector<XmlTypeTag> readXmlTypeTags(std::string_view leading);

// Where the document type declaration in front of the root element names it.
std::optional<Span> findDoctypeName(std::string_view leading);

} // namespace Repository::Documents
