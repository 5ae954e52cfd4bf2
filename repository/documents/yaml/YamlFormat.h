#pragma once

#include "repository/documents/common/Format.h"
#include "repository/documents/yaml/YamlDocument.h"

namespace Repository::Documents {

// Files of YAML 1.2.
class YamlFormat : public Format
{
public:
    std::string_view getName() const override { return "yaml"; }
    std::unique_ptr<Document> makeDocument() const override { return std::make_unique<YamlDocument>(); }
    std::string_view getCertainEndings() const override { return "yaml yml cff eyaml raml sls"; }
    std::string_view getFileNames() const override
    {
        return ".clang-format _clang-format .clang-tidy .clangd .yamllint .gemrc .condarc .ansible-lint "
               "pubspec.lock podfile.lock chart.lock";
    }
    bool begins(std::string_view text) const override { return startsWith(text, "%YAML "); }
    bool claims(std::string_view text) const override;
    bool isInTreeOrder() const override { return true; }
    bool takesText(const std::vector<Entry>& entries) const override;
    std::optional<std::string> writeWhole(std::vector<Entry>& entries) const override;
    std::string explainRefusal(const std::vector<Entry>& entries) const override;
    bool declaresNames(const Document& document) const override;
    std::optional<Entry> originalOf(const Entry& entry) const override;
};

} // namespace Repository::Documents
