#pragma once

#include "repository/documents/common/Format.h"
#include "repository/documents/toml/TomlDocument.h"

namespace Repository::Documents {

// Files of TOML 1.0.
class TomlFormat : public Format
{
public:
    std::string_view getName() const override { return "toml"; }
    std::unique_ptr<Document> makeDocument() const override { return std::make_unique<TomlDocument>(); }
    std::string_view getCertainEndings() const override { return "toml"; }
    std::string_view getFileNames() const override
    {
        return "cargo.lock poetry.lock pipfile uv.lock pdm.lock gopkg.lock .cargo/config containers.conf "
               "registries.conf containers/storage.conf containers/toolbox.conf crio.conf";
    }
    bool claims(std::string_view text) const override;
    bool suits(std::string_view text) const override;
    bool isInTreeOrder() const override { return true; }
    std::optional<std::string> writeWhole(std::vector<Entry>& entries) const override;
    std::string explainRefusal(const std::vector<Entry>& entries) const override;
    bool declaresNames(const Document& document) const override;
    std::optional<Entry> originalOf(const Entry& entry) const override;
};

} // namespace Repository::Documents
