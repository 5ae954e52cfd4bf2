#pragma once

#include "repository/documents/common/Format.h"

namespace Repository::Documents {

// Files of json, with or without comments.
class JsonFormat : public Format
{
public:
    std::string_view getName() const override;
    std::unique_ptr<Document> makeDocument() const override;
    std::string_view getCertainEndings() const override;
    std::string_view getLikelyEndings() const override;
    bool begins(std::string_view text) const override;
    std::string getEmptyText() const override;
    bool isInTreeOrder() const override;
    std::optional<std::string> writeWhole(std::vector<Entry>& entries) const override;
    void visitImport(const Document& document,
                     const std::function<void(const Entry&)>& visitor) const override;
};

} // namespace Repository::Documents
