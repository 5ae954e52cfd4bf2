#pragma once

#include "repository/documents/common/Format.h"
#include "repository/documents/txt/TxtDocument.h"

namespace Repository::Documents {

// Files of lines with a path each.
class TxtFormat : public Format
{
public:
    std::string_view getName() const override { return "txt"; }
    std::unique_ptr<Document> makeDocument() const override { return std::make_unique<TxtDocument>(); }
    std::string_view getCertainEndings() const override { return "txt properties"; }
};

} // namespace Repository::Documents
