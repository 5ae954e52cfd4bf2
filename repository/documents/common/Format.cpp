#include "repository/documents/common/Format.h"

#include "repository/documents/common/TypeTag.h"

namespace Repository::Documents {

std::string Format::explainTypeTag(const Value& value) const
{
    const auto document = makeDocument();
    if (!document->insert("name", value).ok())
        return {};
    const std::string text = document->getBytes();
    return readTypeTag(text.substr(0, text.find_first_of("\r\n")))
               ? "The file notes its type in a comment line above it, as in \"# @type ...\"."
               : std::string();
}

} // namespace Repository::Documents
