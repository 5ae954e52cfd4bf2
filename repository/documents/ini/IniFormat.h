#pragma once

#include "repository/documents/common/Format.h"

namespace Repository::Documents {

// Files of lines with sections.
class IniFormat : public Format
{
public:
    std::string_view getName() const override;
    std::unique_ptr<Document> makeDocument() const override;
    std::string_view getCertainEndings() const override;
    std::string_view getLikelyEndings() const override;
};

} // namespace Repository::Documents
