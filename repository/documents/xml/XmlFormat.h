#pragma once

#include "repository/documents/common/Format.h"
#include "repository/documents/xml/XmlDocument.h"

namespace Repository::Documents {

// Files of xml, which have one element that holds all others.
class XmlFormat : public Format
{
public:
    std::string_view getName() const override { return "xml"; }
    std::unique_ptr<Document> makeDocument() const override { return std::make_unique<XmlDocument>(); }
    std::string_view getCertainEndings() const override { return "xml"; }
    std::string_view getLikelyEndings() const override
    {
        return "svg ui ts pom qrc kcfg xbel docbook policy plist xsd xsl xslt rng xhtml csproj";
    }
    bool begins(std::string_view text) const override;
    bool rulesOut(std::string_view text) const override;
    bool isInTreeOrder() const override { return true; }
    std::string rootOf(const std::vector<Entry>& entries, std::string_view name) const override;
    Entry encodedEntry(const Entry& entry) const override;
    void declareNames(std::string& text) const override;
    bool declaresNames(const Document& document) const override;
    std::optional<Entry> originalOf(const Entry& entry) const override;
    std::string_view getDeclarationStart() const override { return "@xmlns:"; }
    std::string explainTypeTag(const Value& value) const override;
};

} // namespace Repository::Documents
