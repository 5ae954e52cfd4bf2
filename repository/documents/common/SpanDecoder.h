#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/common/TextEncoding.h"

#include <string_view>

namespace Repository::Documents {

// Finds the part of the text that spans of the bytes of its file are. Quick for spans in the order of the
// file.
class SpanDecoder
{
public:
    // Both outlive it.
    SpanDecoder(const TextEncoding& fileEncoding, std::string_view wholeFile)
        : encoding(fileEncoding), bytes(wholeFile)
    {
    }

    Span decode(Span inFile)
    {
        if (inFile.offset < known) {
            known = encoding.byteOrderMarkSize();
            size = 0;
        }
        size += encoding.textSizeOf(bytes.substr(known, inFile.offset - known));
        known = inFile.offset;
        return {size, encoding.textSizeOf(bytes.substr(inFile.offset, inFile.length))};
    }

private:
    const TextEncoding& encoding;
    const std::string_view bytes;
    std::size_t known = encoding.byteOrderMarkSize(); // so many bytes with the mark
    std::size_t size = 0;                             // are so much text
};

} // namespace Repository::Documents
