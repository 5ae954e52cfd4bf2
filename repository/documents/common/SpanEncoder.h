#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/common/TextEncoding.h"

#include <string_view>

namespace Repository::Documents {

// Finds the bytes of a file that spans of its text become. Quick for spans in the order of the text.
class SpanEncoder
{
public:
    // Both outlive it.
    SpanEncoder(const TextEncoding& fileEncoding, std::string_view wholeText)
        : encoding(fileEncoding), text(wholeText)
    {
    }

    Span encode(Span inText)
    {
        if (inText.offset < known)
            known = size = 0;
        size += encoding.sizeOf(text.substr(known, inText.offset - known));
        known = inText.offset;
        return {encoding.byteOrderMarkSize() + size,
                encoding.sizeOf(text.substr(inText.offset, inText.length))};
    }

private:
    const TextEncoding& encoding;
    const std::string_view text;
    std::size_t known = 0; // so much of the text
    std::size_t size = 0;  // takes so many bytes
};

} // namespace Repository::Documents
