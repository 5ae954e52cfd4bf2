#pragma once

#include "repository/documents/common/Format.h"
#include "repository/documents/json/JsonDocument.h"

namespace Repository::Documents {

// Files of json, with or without comments.
class JsonFormat : public Format
{
public:
    std::string_view getName() const override { return "json"; }
    std::unique_ptr<Document> makeDocument() const override { return std::make_unique<JsonDocument>(); }
    std::string_view getCertainEndings() const override { return "json jsonc"; }
    std::string_view getLikelyEndings() const override
    {
        return "geojson webmanifest jshintrc eslintrc babelrc";
    }
    std::string_view getFileNames() const override { return "pipfile.lock composer.lock flake.lock"; }
    bool begins(std::string_view text) const override;
    bool rulesOut(std::string_view text) const override;
    std::string getEmptyText() const override { return "{}\n"; }
    bool isInTreeOrder() const override { return true; }
    bool takesText(const std::vector<Entry>& entries) const override;
    std::optional<std::string> writeWhole(std::vector<Entry>& entries) const override;
    std::string explainRefusal(const std::vector<Entry>& entries) const override;
    // Whole files alone are written with encoded names.
    Entry encodedEntry(const Entry& entry) const override { return entry; }
    void declareNames(std::string&) const override {}
    bool declaresNames(const Document& document) const override;
    std::optional<Entry> originalOf(const Entry& entry) const override;
    std::string explainTypeTag(const Value& value) const override;
};

} // namespace Repository::Documents
