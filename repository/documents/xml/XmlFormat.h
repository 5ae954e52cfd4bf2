#pragma once

#include "repository/documents/common/Format.h"

namespace Repository::Documents {

// Files of xml, which have one element that holds all others.
class XmlFormat : public Format
{
public:
    std::string_view getName() const override;
    std::unique_ptr<Document> makeDocument() const override;
    std::string_view getCertainEndings() const override;
    std::string_view getLikelyEndings() const override;
    bool begins(std::string_view text) const override;
    bool isInTreeOrder() const override;
    std::string rootOf(const std::vector<Entry>& entries, std::string_view name) const override;
    std::string_view getDeclarationStart() const override;
};

} // namespace Repository::Documents
