#include "repository/documents/common/TextPosition.h"

#include "host/FrameworkCore/Values/Utf8.h"
#include "repository/documents/common/TextEncoding.h"

#include <algorithm>

namespace Repository::Documents {

TextPosition positionOf(std::string_view text, std::size_t offset)
{
    const std::string_view before = text.substr(0, offset);
    TextPosition position;
    std::size_t lineStart =
        before.substr(0, utf8ByteOrderMark.size()) == utf8ByteOrderMark ? utf8ByteOrderMark.size() : 0;
    for (std::size_t i = 0; i < before.size(); ++i) {
        const bool pair = before[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
        if (before[i] == '\n' || (before[i] == '\r' && !pair)) {
            ++position.line;
            lineStart = i + 1;
        }
    }
    for (std::size_t i = std::min(lineStart, offset); i < before.size(); ++position.column)
        i += std::max<std::size_t>(FrameworkCore::Values::utf8Length(text.substr(i)), 1);
    return position;
}

} // namespace Repository::Documents
