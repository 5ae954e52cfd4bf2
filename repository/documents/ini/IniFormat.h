#pragma once

#include "repository/documents/common/Format.h"
#include "repository/documents/ini/IniDocument.h"

namespace Repository::Documents {

// Files of lines with sections, in one dialect.
class IniFormat : public Format
{
public:
    // The name is that of the format, alone or with that of the dialect, which must outlive this.
    IniFormat(std::string formatName, const Dialect& fileDialect)
        : name(std::move(formatName)), dialect(fileDialect)
    {
    }

    std::string_view getName() const override { return name; }
    std::unique_ptr<Document> makeDocument() const override { return std::make_unique<IniDocument>(dialect); }
    std::string_view getCertainEndings() const override { return "ini"; }
    std::string_view getLikelyEndings() const override
    {
        return "conf cfg cnf cf config rc desktop directory theme colors repo editorconfig gitconfig npmrc "
               "service socket timer target mount automount swap path slice scope link netdev network nspawn";
    }
    bool resembles(std::string_view text) const override;
    bool rulesOut(std::string_view text) const override;

private:
    const std::string name;
    const Dialect& dialect;
};

} // namespace Repository::Documents
