#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/common/TextEncoding.h"

#include <new>
#include <string>
#include <utility>

namespace Repository::Documents {

// Has the text of a file with a bounded size read by parse(text, encoding), which gives an outcome and may
// throw std::bad_alloc.
template <typename Parse>
Outcome parseText(std::string bytes, const char* format, const Parse& parse)
{
    constexpr std::size_t maximumSize = std::size_t(1) << 30;
    try {
        TextEncoding encoding;
        const Outcome outcome = encoding.decode(bytes, {});
        if (outcome.ok() && bytes.size() > maximumSize)
            return refused(Reason::tr("the file is larger than 1 GiB, which is the most for %1", {format}));
        return outcome.ok() ? parse(std::move(bytes), encoding) : outcome;
    } catch (const std::bad_alloc&) {
        return refused(Reason::tr("there is not enough memory for a file of this size"));
    }
}

} // namespace Repository::Documents
